#pragma once

#include <algorithm>
#include <string_view>
#include <utility>
#include <vector>

namespace text {

/// Values by name, in one block: a hash table of as many names takes three times the memory.
template <typename Value>
class NameTable {
 public:
  using Entry = std::pair<std::string_view, Value>;

  NameTable() = default;

  /// Of entries of one name the first counts. The names must live as long as the table.
  explicit NameTable(std::vector<Entry> entries) : entries_(std::move(entries)) {
    std::ranges::stable_sort(entries_, {}, &Entry::first);
    entries_.shrink_to_fit();
  }

  /// nullptr: no entry has that name.
  const Value* find(std::string_view name) const {
    const auto entry = std::ranges::lower_bound(entries_, name, {}, &Entry::first);
    return entry != entries_.end() && entry->first == name ? &entry->second : nullptr;
  }

 private:
  std::vector<Entry> entries_;  ///< by name
};

}  // namespace text
