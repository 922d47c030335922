#include "scanner/command_line/option_values.h"

#include <algorithm>

#include "scanner/command_line/arguments.h"
#include "scanner/command_line/program_names.h"
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
  const auto value = optionValue(recognition::viewsOf(arguments), names);
  if (!value) return std::nullopt;
  return std::string(*value);
}

}  // namespace ProcessScanner

namespace recognition {
namespace {

/// "-listen", as programs written in Go take "--listen".
bool isListedWithTwoDashes(std::string_view options, std::string_view written) {
  constexpr std::size_t kShortest = 5;
  if (written.size() < kShortest || written[1] == '-') return false;
  const auto found = options.find(written);
  return found != std::string_view::npos && found > 0 && options[found - 1] == '-' &&
         isListed(options, options.substr(found - 1, written.size() + 1));
}

}  // namespace

Arguments lookedAt(const Invocation& invocation) {
  constexpr std::size_t kMost = 1024;
  return invocation.arguments.first(std::min(invocation.arguments.size(), kMost));
}

std::optional<std::string_view> valueOf(Arguments arguments, std::string_view options) {
  for (std::size_t i = 0; i < arguments.size(); ++i) {
    const std::string_view word = arguments[i];
    if (word.empty() || word.front() != '-') continue;
    const auto equals = word.find('=');
    const std::string_view written = word.substr(0, equals);
    const NormalizedOption option(written);
    const bool isWritten = option.name() == written;
    if (!isListed(options, written) && (isWritten || !isListed(options, option.name())) &&
        !isListedWithTwoDashes(options, written)) {
      continue;
    }
    if (equals != std::string_view::npos) {
      if (equals + 1 < word.size()) return word.substr(equals + 1);
    } else if (i + 1 < arguments.size() && !arguments[i + 1].starts_with('-')) {
      return arguments[i + 1];
    }
  }
  return std::nullopt;
}

bool hasOption(const Invocation& invocation, std::string_view options) {
  return std::ranges::any_of(invocation.arguments, [options](std::string_view word) {
    return word.starts_with('-') && isListed(options, normalized(word.substr(0, word.find('='))));
  });
}

}  // namespace recognition
