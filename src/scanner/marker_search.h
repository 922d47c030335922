#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "scanner/marker_set.h"

/// Finds all markers in a text at once: an Aho-Corasick automaton, its failure links resolved into
/// one table, so that every byte costs one look-up, whatever the text.
class MarkerSearch {
 public:
  /// Which markers occur in `text`. The automaton is built on first use.
  static MarkerSet find(std::string_view text);

 private:
  MarkerSearch();
  MarkerSet findIn(std::string_view text) const;

  /// A row of next_, named by where it starts. Rows that end a marker come last. Two bytes
  /// are enough for the table (marker_search.cpp proves it), and keep it small and fast.
  using Row = std::uint16_t;

  std::array<std::uint8_t, 256> classes_{};  // of bytes; those in no marker share class 0
  std::size_t classCount_ = 1;
  std::vector<Row> next_;         // by row and class
  Row firstEnding_ = 0;           // the first row that ends a marker
  std::vector<MarkerSet> ended_;  // by row from there on: the markers that end there
};
