#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <span>
#include <string_view>

#include "scanner/roles/role_word_table.h"

/// Every marker of role_word_table.h in one table; a marker's place in it is its bit in a set. One
/// that stands in several lists goes by its first place.
inline constexpr auto kMarkers = [] {
  std::array<std::string_view, kTrainingMarkers.size() + kLoraMarkers.size() +
                                   kFrameworkMarkers.size() + kOtherMarkers.size()>
      all;
  auto* end = std::copy(kTrainingMarkers.begin(), kTrainingMarkers.end(), all.begin());
  end = std::copy(kLoraMarkers.begin(), kLoraMarkers.end(), end);
  end = std::copy(kFrameworkMarkers.begin(), kFrameworkMarkers.end(), end);
  std::copy(kOtherMarkers.begin(), kOtherMarkers.end(), end);
  return all;
}();

/// A set of markers. Rules write theirs as the texts themselves ("vllm", or a list of them);
/// the compiler turns these into bits, and refuses a text that no list of role_word_table.h holds.
class MarkerSet {
 public:
  constexpr MarkerSet() = default;
  consteval MarkerSet(const char* marker) { insert(indexOf(marker)); }
  consteval MarkerSet(std::initializer_list<std::string_view> markers) {
    insertAll({markers.begin(), markers.size()});
  }
  /// One whole list of role_word_table.h.
  template <std::size_t kSize>
  consteval MarkerSet(const std::array<std::string_view, kSize>& markers) {
    insertAll(markers);
  }

  /// Adds a marker by its place in kMarkers.
  constexpr void insert(std::size_t index) {
    words_[index / kWordBits] |= std::uint64_t{1} << index % kWordBits;
  }

  constexpr void insert(const MarkerSet& other) {
    for (std::size_t i = 0; i < words_.size(); ++i) words_[i] |= other.words_[i];
  }

  /// Whether the sets share a marker.
  constexpr bool intersects(const MarkerSet& other) const {
    std::uint64_t common = 0;
    for (std::size_t i = 0; i < words_.size(); ++i) common |= words_[i] & other.words_[i];
    return common != 0;
  }

  constexpr bool empty() const { return *this == MarkerSet(); }
  constexpr bool operator==(const MarkerSet&) const = default;

 private:
  static constexpr std::size_t kWordBits = 64;

  static consteval std::size_t indexOf(std::string_view marker) {
    const auto* found = std::ranges::find(kMarkers, marker);
    if (found == kMarkers.end()) throw "this text is missing from role_word_table.h";
    return static_cast<std::size_t>(found - kMarkers.begin());
  }

  consteval void insertAll(std::span<const std::string_view> markers) {
    for (const std::string_view marker : markers) insert(indexOf(marker));
  }

  std::array<std::uint64_t, (kMarkers.size() + kWordBits - 1) / kWordBits> words_{};
};

/// Finds all markers in a text at once, in one walk over it.
namespace MarkerSearch {

/// Which markers occur in `text`. Linear in its length; the first call makes ready for all.
MarkerSet find(std::string_view text);

}  // namespace MarkerSearch
