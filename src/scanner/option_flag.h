#pragma once

#include <optional>
#include <span>
#include <string_view>

namespace ProcessScanner {

/// flag() over views; the value is a part of its argument.
std::optional<std::string_view> optionValue(std::span<const std::string_view> arguments,
                                            std::span<const std::string_view> names);

}  // namespace ProcessScanner
