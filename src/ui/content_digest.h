#pragma once

#include <cstdint>

#include "ui/menu_construction.h"

/// Stands for all that a menu is built from: of equal digests the menus are equal, but for the
/// strip's pressure and for the lines about requests to quit, which tell the time. Made with a
/// number of chance, so that nobody can choose names that share one.
struct ContentDigest {
  std::uint64_t low = 0;
  std::uint64_t high = 0;
  bool operator==(const ContentDigest&) const = default;
};

/// Allocates nothing.
ContentDigest digestOf(const MenuContent& content);
