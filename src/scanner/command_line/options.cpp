#include "scanner/command_line/options.h"

#include <algorithm>

#include "scanner/command_line/arguments.h"
#include "scanner/process_scanner.h"
#include "text/path.h"
#include "text/unicode.h"

namespace ProcessScanner {
namespace {

/// For `python [options] -m MODULE ...` the arguments behind the module; for any other command all
/// arguments.
std::span<const std::string_view> programArguments(std::span<const std::string_view> arguments) {
  if (arguments.empty()) return arguments;
  const std::string exe = text::lowered(text::lastPathComponent(arguments[0]));
  if (!exe.starts_with("python")) return arguments;

  for (std::size_t i = 1; i < arguments.size() && arguments[i].starts_with('-'); ++i) {
    if (arguments[i] == "-m") return arguments.subspan(std::min(i + 2, arguments.size()));
    if (arguments[i] == "-W" || arguments[i] == "-X") ++i;  // these take the next argument
  }
  return arguments;
}

}  // namespace

std::optional<std::string_view> optionValue(std::span<const std::string_view> arguments,
                                            std::span<const std::string_view> names) {
  for (std::size_t i = 0; i < arguments.size(); ++i) {
    const std::string_view argument = arguments[i];
    for (const std::string_view name : names) {
      if (!argument.starts_with(name)) continue;
      const std::string_view rest = argument.substr(name.size());
      if (rest.empty() && i + 1 < arguments.size()) return arguments[i + 1];
      if (rest.starts_with('=')) return rest.substr(1);
    }
  }
  return std::nullopt;
}

std::optional<std::string> flag(std::span<const std::string> arguments,
                                std::span<const std::string_view> names) {
  const auto value = optionValue(recognition::viewsOf(arguments), names);
  if (!value) return std::nullopt;
  return std::string(*value);
}

std::optional<std::string_view> modelOption(std::span<const std::string_view> arguments,
                                            std::span<const std::string_view> names) {
  return optionValue(programArguments(arguments), names);
}

}  // namespace ProcessScanner
