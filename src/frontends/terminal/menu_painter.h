#pragma once

#include <string>

#include "frontends/terminal/cell_grid.h"
#include "frontends/terminal/screen.h"
#include "ui/menu.h"

namespace terminal {

class MenuView;
struct MenuGeometry;

/// Draws the whole menu, with its submenu if one is open. `title` is the program's own.
void paintMenu(CellGrid& grid, const MenuView& view, const MenuGeometry& geometry,
               const std::string& title, const Look& look);

/// Draws what is shown in a window that is too small for the menu: the used share, the largest
/// process and what size the menu needs, as far as they fit.
void paintTooSmall(CellGrid& grid, const MenuView& view, const Look& look);

/// How many columns a row's dot, title and letter take.
int columnsOfRow(const MenuItem& row, const MenuView& view, const Look& look);

}  // namespace terminal
