#pragma once

#include <charconv>
#include <concepts>
#include <optional>
#include <string_view>
#include <system_error>

namespace text {

/// The number that the whole of `text` is: digits, and "-" before them where the type has a sign.
/// None for all else, and for a number that the type can't hold.
template <std::integral Number>
std::optional<Number> decimal(std::string_view text) {
  Number number = 0;
  const char* const textEnd = text.data() + text.size();
  const auto [end, error] = std::from_chars(text.data(), textEnd, number);
  if (error != std::errc() || end != textEnd) return std::nullopt;
  return number;
}

}  // namespace text
