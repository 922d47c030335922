#pragma once

#include <string>
#include <string_view>

/// The parts as one line, with `between` between each two of them.
inline std::string joined(const auto& parts, std::string_view between = " ") {
  std::string line;
  std::string_view gap;
  for (const auto& part : parts) {
    line += gap;
    line += part;
    gap = between;
  }
  return line;
}
