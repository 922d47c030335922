#include "platform/macos/launchctl_list.h"

#include <string>

#include "text/decimal.h"
#include "text/split.h"
#include "text/unicode.h"

namespace platform {
namespace {

std::optional<std::int32_t> number(std::string_view field) {
  if (field.starts_with('+')) {
    field.remove_prefix(1);
    if (field.starts_with('-')) return std::nullopt;
  }
  return text::decimal<std::int32_t>(field);
}

void addLine(std::string_view line, LoadedLaunchAgents& loaded) {
  constexpr char kTab = '\t';
  const auto tab = line.find(kTab);
  if (tab == std::string_view::npos || line.find(kTab, tab + 1) == std::string_view::npos) return;
  const std::string_view pid = text::takeUntil(kTab, line);
  text::takeUntil(kTab, line);  // the status of its last exit
  const std::string_view label = text::takeUntil(kTab, line);
  loaded.insert_or_assign(std::string(label), number(pid));
}

}  // namespace

LoadedLaunchAgents parseLaunchctlList(std::string_view output) {
  LoadedLaunchAgents loaded;
  if (!text::isUtf8(output)) return loaded;
  bool isHeader = true;
  while (!output.empty()) {
    const std::string_view line = text::takeUntil('\n', output);
    if (line.empty()) continue;
    if (!isHeader) addLine(line, loaded);
    isHeader = false;
  }
  return loaded;
}

}  // namespace platform
