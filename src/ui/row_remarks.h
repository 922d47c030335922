#pragma once

#include <span>
#include <string>

#include "ui/menu.h"

// What is said of a process's row beside its title and its tooltip, where there is room for it.

/// What stands behind the row's title: "  pid 30  [A]  left behind". The pid where another
/// process of `rows` has the same name, the letter of its segment where the strip has one, and
/// whether the process was left behind; "" for a row of which none of it can be said. `strip` may
/// be nullptr.
std::string rowTag(const MenuItem& row, std::span<const MenuItem> rows,
                   const MemoryPressureView* strip);

/// How long the row's process has been running by now: "for 3 h 5 min"; "" where that is unknown.
std::string runningTime(const MenuItem& row);
