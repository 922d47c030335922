#pragma once

#include <cstddef>
#include <vector>

/// A part of a text, in bytes: from `begin` to before `end`.
struct TextSpan {
  std::size_t begin = 0;  ///< its first byte
  std::size_t end = 0;    ///< the byte after its last

  bool operator==(const TextSpan&) const = default;
};

/// Sorts the spans and merges those that overlap or touch.
void mergeSpans(std::vector<TextSpan>& spans);
