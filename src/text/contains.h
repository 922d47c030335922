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
  // Not std::ranges::search: clang 14 can't compile that of gcc's library.
  const auto sameLetter = [](char a, char b) { return asciiLower(a) == asciiLower(b); };
  return part.empty() ||
         std::search(text.begin(), text.end(), part.begin(), part.end(), sameLetter) != text.end();
}

}  // namespace text
