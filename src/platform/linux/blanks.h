#pragma once

#include <string_view>

namespace platform {

/// What unit files and desktop entries may have around a line, a key and a value.
inline constexpr std::string_view kBlanks = " \t\r";

/// `text` without the blanks at its ends.
inline std::string_view trimmed(std::string_view text) {
  const auto begin = text.find_first_not_of(kBlanks);
  if (begin == std::string_view::npos) return {};
  return text.substr(begin, text.find_last_not_of(kBlanks) + 1 - begin);
}

}  // namespace platform
