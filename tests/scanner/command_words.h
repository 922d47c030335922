#pragma once

#include <string>
#include <vector>

/// The arguments of a command that is written as one line, cut at every space.
inline std::vector<std::string> words(const std::string& line) {
  std::vector<std::string> result(1);
  for (const char c : line) {
    if (c == ' ') {
      result.emplace_back();
    } else {
      result.back() += c;
    }
  }
  return result;
}
