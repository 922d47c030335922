#pragma once

#include <string_view>

namespace platform {

/// The blanks that unit files and desktop entries allow around lines, keys and values.
inline constexpr std::string_view kBlanks = " \t\r";

/// `text` without the blanks at its ends.
inline std::string_view trimmed(std::string_view text) {
  const auto begin = text.find_first_not_of(kBlanks);
  if (begin == std::string_view::npos) return {};
  return text.substr(begin, text.find_last_not_of(kBlanks) + 1 - begin);
}

}  // namespace platform
