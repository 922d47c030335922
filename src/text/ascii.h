#pragma once

#include <algorithm>
#include <string_view>

/// Letters, digits and case of ASCII only, independent of the locale.
namespace text {

constexpr bool isUpper(char c) {
  return c >= 'A' && c <= 'Z';
}
constexpr bool isLower(char c) {
  return c >= 'a' && c <= 'z';
}
constexpr bool isLetter(char c) {
  return isUpper(c) || isLower(c);
}
constexpr bool isDigit(char c) {
  return c >= '0' && c <= '9';
}
constexpr bool isAlphanumeric(char c) {
  return isLetter(c) || isDigit(c);
}
constexpr bool isHexDigit(char c) {
  return isDigit(c) || (c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F');
}
constexpr char asciiLower(char c) {
  return isUpper(c) ? static_cast<char>(c - 'A' + 'a') : c;
}

/// Blank, tab, line feed, vertical tab, form feed, carriage return.
constexpr bool isWhiteSpace(char c) {
  return c == ' ' || (c >= '\t' && c <= '\r');
}

/// Whether `text` is `lowerCase` when its capitals are lowered; `lowerCase` has none.
constexpr bool equalsLowered(std::string_view text, std::string_view lowerCase) {
  return std::ranges::equal(text, lowerCase, {}, asciiLower);
}

}  // namespace text
