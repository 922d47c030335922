#pragma once

#include <optional>
#include <span>
#include <string_view>

namespace ProcessScanner {

/// flag() over views; the value is a part of its argument.
std::optional<std::string_view> optionValue(std::span<const std::string_view> arguments,
                                            std::span<const std::string_view> names);

/// The model that one of the options `names` gives. A Python interpreter's own "-m MODULE"
/// names a module, not a model: there, options are looked for behind the module.
std::optional<std::string_view> modelOption(std::span<const std::string_view> arguments,
                                            std::span<const std::string_view> names);

}  // namespace ProcessScanner
