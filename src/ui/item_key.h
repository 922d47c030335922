#pragma once

#include <compare>
#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "ui/menu.h"

/// What an item of a menu is about, by which it is found again when the menu was built anew.
/// Figures in its title, and what its submenu offers, may change meanwhile. A later process with
/// the same pid is another thing.
struct ItemKey {
  std::string section;  ///< the heading above it: a process may stand in two sections
  std::string subject;  ///< what choosing it does, and to which process or launch agent
  int place = 1;        ///< from 1: among those of the same section and subject

  auto operator<=>(const ItemKey&) const = default;
};

/// The key of each item, in order; no two are equal.
std::vector<ItemKey> itemKeys(std::span<const MenuItem> items);

/// Which of these items is about the same: the one with this very key, else the first with its
/// subject, which may have gone to another section.
std::optional<std::size_t> findItem(std::span<const MenuItem> items, const ItemKey& key);
