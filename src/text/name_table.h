#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <string_view>
#include <utility>
#include <vector>

namespace text {

/// Values by name, at most 30,000. A hash table in two blocks: one with a block for each name
/// takes three times the memory.
template <typename Value>
class NameTable {
 public:
  using Entry = std::pair<std::string_view, Value>;

  NameTable() = default;

  /// Of entries of one name the first counts. The names must live as long as the table.
  explicit NameTable(std::vector<Entry> entries)
      : entries_(std::move(entries)), slots_(std::bit_ceil(entries_.size() * 2), kEmpty) {
    entries_.shrink_to_fit();
    for (std::size_t i = 0; i < entries_.size(); ++i) {
      std::uint16_t& slot = slots_[slotOf(entries_[i].first)];
      if (slot == kEmpty) slot = static_cast<std::uint16_t>(i);
    }
  }

  /// nullptr: no entry has that name.
  const Value* find(std::string_view name) const {
    if (entries_.empty()) return nullptr;
    const std::uint16_t entry = slots_[slotOf(name)];
    return entry == kEmpty ? nullptr : &entries_[entry].second;
  }

 private:
  static constexpr std::uint16_t kEmpty = 0xFFFF;

  /// The slot of that name, or the empty one where it would be: half of them are.
  std::size_t slotOf(std::string_view name) const {
    const std::size_t last = slots_.size() - 1;
    std::size_t slot = std::hash<std::string_view>()(name) & last;
    while (slots_[slot] != kEmpty && entries_[slots_[slot]].first != name) slot = (slot + 1) & last;
    return slot;
  }

  std::vector<Entry> entries_;
  std::vector<std::uint16_t> slots_;  ///< places in entries_
};

}  // namespace text
