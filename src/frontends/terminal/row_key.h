#pragma once

#include <cstddef>
#include <optional>
#include <string>

#include "frontends/terminal/list_cursor.h"

namespace terminal {

/// What a row of the menu is about, so that it can be found again when the menu was rebuilt.
struct RowKey {
  std::string section;  ///< the heading above it: a process may stand in two sections
  std::optional<ProcessReference> process;
  std::string launchAgentPath;
  Action action = Action::none;

  bool operator==(const RowKey&) const = default;
};

RowKey keyOf(Items items, std::size_t index);

/// The row that is about the same thing; the one in the same section where there are two. A
/// later process with the same pid is another thing.
std::optional<std::size_t> findRow(Items items, const RowKey& key);

/// What a submenu's item does, by which it is found again when the submenu was rebuilt.
struct ItemKey {
  Action action = Action::none;
  std::string label;  ///< the launch agent's that Action::unloadByLabel is about

  bool operator==(const ItemKey&) const = default;
};

ItemKey keyOf(const MenuItem& item);

/// The submenu item that does the same.
std::optional<std::size_t> findItem(Items items, const ItemKey& key);

}  // namespace terminal
