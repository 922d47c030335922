#include "platform/macos/launchctl_list.h"

#include <charconv>
#include <string>
#include <system_error>

#include "text/unicode.h"

namespace platform {
namespace {

/// Cuts off what stands before the separator, and the separator itself.
std::string_view takeUpTo(char separator, std::string_view& rest) {
  const std::string_view first = rest.substr(0, rest.find(separator));
  rest.remove_prefix(first.size() < rest.size() ? first.size() + 1 : rest.size());
  return first;
}

std::optional<std::int32_t> number(std::string_view field) {
  if (field.starts_with('+')) {
    field.remove_prefix(1);
    if (field.starts_with('-')) return std::nullopt;
  }
  std::int32_t value = 0;
  const auto [end, error] = std::from_chars(field.data(), field.data() + field.size(), value);
  if (error != std::errc() || end != field.data() + field.size()) return std::nullopt;
  return value;
}

void addLine(std::string_view line, LoadedLaunchAgents& loaded) {
  constexpr char kTab = '\t';
  const auto tab = line.find(kTab);
  if (tab == std::string_view::npos || line.find(kTab, tab + 1) == std::string_view::npos) return;
  const std::string_view pid = takeUpTo(kTab, line);
  takeUpTo(kTab, line);  // the status of its last exit
  const std::string_view label = takeUpTo(kTab, line);
  loaded.insert_or_assign(std::string(label), number(pid));
}

}  // namespace

LoadedLaunchAgents parseLaunchctlList(std::string_view output) {
  LoadedLaunchAgents loaded;
  if (!text::isUtf8(output)) return loaded;
  bool isHeader = true;
  while (!output.empty()) {
    const std::string_view line = takeUpTo('\n', output);
    if (line.empty()) continue;
    if (!isHeader) addLine(line, loaded);
    isHeader = false;
  }
  return loaded;
}

}  // namespace platform
