#pragma once

#include <optional>
#include <string>
#include <vector>

#include "frontends/terminal/cell_grid.h"
#include "ui/item_key.h"

namespace terminal {

class AlertView;
class MenuView;
struct MenuGeometry;

/// What Enter or a click would choose: a row of the list, an item of its submenu, or a button.
struct Target {
  const void* alert = nullptr;  ///< the alert that is open, if one is
  std::optional<ItemKey> row;
  std::string item;  ///< the submenu's item or the alert's button; "": the row itself

  bool operator==(const Target&) const = default;
};

/// Everything that can be chosen on the screen as it was drawn.
struct Targets {
  Size size;                        ///< of the screen
  std::optional<Target> selection;  ///< what Enter chooses
  int selectionY = 0;               ///< the line that the selection is in
  bool asks = false;                ///< an alert with more than one button is open
  std::vector<Target> lines;        ///< what a click chooses, by line
};

/// The targets of the menu, and of the alert over it if one is open, on a screen of that size,
/// which must not be too small.
Targets targetsOf(Size size, const MenuView& view, const MenuGeometry& geometry,
                  const AlertView* alert);

}  // namespace terminal
