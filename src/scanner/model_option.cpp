#include "scanner/model_option.h"

#include <algorithm>

#include "scanner/option_flag.h"
#include "text/path.h"
#include "text/unicode.h"

namespace ProcessScanner {
namespace {

/// The arguments behind the module of `python [interpreter's options] -m MODULE ...`; all of
/// them for any other command.
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

std::optional<std::string_view> modelOption(std::span<const std::string_view> arguments,
                                            std::span<const std::string_view> names) {
  return optionValue(programArguments(arguments), names);
}

}  // namespace ProcessScanner
