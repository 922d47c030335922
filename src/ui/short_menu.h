#pragma once

#include <cstddef>

#include "ui/menu.h"

/// The menu for somebody who draws it without being able to scroll it, and draws no dot on a row
/// that has a submenu. It is made of the menu itself, so that the two never disagree.
namespace ShortMenu {

/// How much of it the screen can show.
enum class Room {
  plenty,  ///< all of it with any one submenu open
  little,  ///< less: the largest processes have a submenu, too, and submenus are shorter
};

/// On a screen that many lines high, in points. GNOME Shell's rows are 39 lines high.
Room roomOn(int screenLines);

/// How many processes and how many rows of a section it has at most.
///@{
inline constexpr std::size_t kMaxLargest = 5;
inline constexpr std::size_t kMaxRows = 8;  ///< where there are more, the last one says so
inline constexpr std::size_t kMaxRowsInLittleRoom = 5;
///@}

/// From top to bottom: the strip, Action::openMenu, the machine's memory, the largest processes,
/// each section that has rows as a submenu, "About" and "Quit". A section that the summary adds up
/// has that line for its title. A row acts by Action::openRow; its submenu is what that opens, and
/// is not meant to be shown in its place.
Menu of(const Menu& full, Room room = Room::plenty);

/// What Action::openRow opens: the row's title, then its submenu.
Menu ofRow(const MenuItem& row);

}  // namespace ShortMenu
