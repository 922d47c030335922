#pragma once

#include <optional>

#include "ui/menu.h"

/// A short form of the menu, for a host that can't scroll it and draws no dot on a row with a
/// submenu. It is made from the full menu, so that the two never disagree.
namespace ShortMenu {

/// How much of it the screen can show.
enum class Room {
  plenty,  ///< all of it with any one submenu open
  little,  ///< less: the largest processes have a submenu, too, and submenus are shorter
};

/// For a screen of this height, in points. GNOME Shell's rows are 39 points high.
Room roomOn(int screenLines);

/// From top to bottom: the strip, Action::openMenu, the machine's memory, the largest processes,
/// each section that has rows as a submenu, "About" and "Quit". Where the summary has a line that
/// adds up a section, that line is the section's title. A process's row has Action::openRow; its
/// submenu is what that action opens, and is not to be shown as a submenu.
Menu of(const Menu& full, Room room = Room::plenty);

/// What Action::openRow opens: the row's title, then its submenu or what it `opens`.
Menu ofRow(const MenuItem& row);

/// The same of the process's row in the full menu, which may be among those that a section leaves
/// out; none where it has no row.
std::optional<Menu> ofProcess(const Menu& full, const ProcessReference& process);

}  // namespace ShortMenu
