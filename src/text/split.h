#pragma once

#include <algorithm>
#include <string_view>
#include <vector>

/// Lists, lines and fields: texts in which one character stands between the parts.
namespace text {

/// Cuts the first part off `rest`, together with the separator behind it, and returns the part.
/// Where there is no separator that is the whole text.
constexpr std::string_view takeUntil(char separator, std::string_view& rest) {
  const std::string_view part = rest.substr(0, rest.find(separator));
  rest.remove_prefix(std::min(part.size() + 1, rest.size()));
  return part;
}

/// The parts of a list such as PATH. Empty parts are left out.
inline std::vector<std::string_view> partsOf(std::string_view list, char separator) {
  std::vector<std::string_view> parts;
  while (!list.empty()) {
    if (const auto part = takeUntil(separator, list); !part.empty()) parts.push_back(part);
  }
  return parts;
}

/// Whether `part`, which is not empty, is one of the parts.
constexpr bool holdsPart(std::string_view list, char separator, std::string_view part) {
  while (!list.empty()) {
    if (takeUntil(separator, list) == part) return true;
  }
  return false;
}

}  // namespace text
