#pragma once

#include <cstddef>
#include <string_view>

namespace text {

/// The beginning of `text`, which is UTF-8, in at most `limit` bytes. No scalar is cut in two.
inline std::string_view withinBytes(std::string_view text, std::size_t limit) {
  if (text.size() <= limit) return text;
  const auto isInsideScalar = [](char byte) { return (byte & 0xC0) == 0x80; };
  while (limit > 0 && isInsideScalar(text[limit])) --limit;
  return text.substr(0, limit);
}

}  // namespace text
