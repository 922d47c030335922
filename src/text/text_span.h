#pragma once

#include <cstddef>
#include <vector>

/// A part of a text, in bytes: from `begin` to before `end`.
struct TextSpan {
  std::size_t begin = 0;
  std::size_t end = 0;

  bool operator==(const TextSpan&) const = default;
};

/// A part of one of several arguments.
struct ArgumentSpan {
  std::size_t argument = 0;  ///< its index
  TextSpan span;
};

/// Puts them in order and makes one of those that overlap or touch.
void mergeSpans(std::vector<TextSpan>& spans);
