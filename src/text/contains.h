#pragma once

#include <algorithm>
#include <initializer_list>
#include <string_view>

#include "text/ascii.h"

namespace text {

/// Whether `part` occurs; "" occurs everywhere.
constexpr bool contains(std::string_view text, std::string_view part) {
  return text.find(part) != std::string_view::npos;
}

/// Whether any of `parts` occurs.
constexpr bool containsAny(std::string_view text, std::initializer_list<std::string_view> parts) {
  return std::ranges::any_of(parts, [text](std::string_view part) { return contains(text, part); });
}

/// The same, whatever the case of ASCII letters.
inline bool containsInAnyCase(std::string_view text, std::string_view part) {
  return !std::ranges::search(text, part, {}, asciiLower, asciiLower).empty() || part.empty();
}

}  // namespace text
