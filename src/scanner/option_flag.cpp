#include "scanner/option_flag.h"

#include "scanner/command_line.h"
#include "scanner/process_scanner.h"

namespace ProcessScanner {

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
  const auto value = optionValue(viewsOf(arguments), names);
  if (!value) return std::nullopt;
  return std::string(*value);
}

}  // namespace ProcessScanner
