#pragma once

#include <optional>
#include <string>
#include <vector>

#include "frontends/terminal/cell_grid.h"
#include "frontends/terminal/row_key.h"

namespace terminal {

class AlertView;
class MenuView;
struct MenuGeometry;

/// What Enter or a click would choose: a row of the list, an item of its submenu, or a button.
struct Target {
  const void* alert = nullptr;  ///< the alert that is open, if one is
  std::optional<RowKey> row;
  std::string item;  ///< the submenu's item or the alert's button; "": the row itself

  bool operator==(const Target&) const = default;
};

/// What can be chosen in one picture.
struct Targets {
  Size size;                        ///< of the picture
  std::optional<Target> selection;  ///< of Enter
  int selectionY = 0;               ///< the line that it stands in
  bool asks = false;                ///< an alert with more than one button is open
  std::vector<Target> lines;        ///< of a click, line by line
};

/// Of the menu on a screen of that size, which is not too small, and of the alert that is open
/// above it, if one is.
Targets targetsOf(Size size, const MenuView& view, const MenuGeometry& geometry,
                  const AlertView* alert);

}  // namespace terminal
