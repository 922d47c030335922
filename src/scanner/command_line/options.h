#pragma once

#include <optional>
#include <span>
#include <string_view>

namespace ProcessScanner {

/// ProcessScanner::flag for views. The value points into its argument.
std::optional<std::string_view> optionValue(std::span<const std::string_view> arguments,
                                            std::span<const std::string_view> names);

/// The model that one of the options `names` gives. Python's own "-m MODULE" is no model, so for a
/// Python interpreter only the options behind the module count.
std::optional<std::string_view> modelOption(std::span<const std::string_view> arguments,
                                            std::span<const std::string_view> names);

}  // namespace ProcessScanner
