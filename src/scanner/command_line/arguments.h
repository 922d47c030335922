#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace recognition {

/// What a process was started with, the program's own name first, or a part of it. The texts
/// belong to somebody else.
using Arguments = std::span<const std::string_view>;

/// The strings as views; they must outlive the result.
inline std::vector<std::string_view> viewsOf(std::span<const std::string> strings) {
  return {strings.begin(), strings.end()};
}

/// All of them in one text, with a blank between two.
inline std::string joined(Arguments arguments) {
  std::string line;
  for (std::size_t i = 0; i < arguments.size(); ++i) {
    if (i > 0) line += ' ';
    line += arguments[i];
  }
  return line;
}

}  // namespace recognition
