#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "frontends/terminal/cell_grid.h"
#include "frontends/terminal/screen.h"

namespace terminal {

class MenuView;

/// The smallest window in which the menu can be used.
inline constexpr Size kSmallestSize{40, 10};

constexpr bool isTooSmall(Size size) {
  return size.width < kSmallestSize.width || size.height < kSmallestSize.height;
}

/// Where everything is on a screen, which must not be too small. A box of height 0 is not shown.
struct MenuGeometry {
  Box header;
  Box strip;
  Box gpuTrack;
  Box topRule;
  Box list;
  Box bottomRule;
  Box toolTip;
  Box notice;
  Box keys;
  std::optional<Box> submenu;  ///< with its frame; set while a submenu is open

  int submenuHeight() const { return submenu ? submenu->height - 2 : 0; }

  /// The index of the row or submenu item that is shown at this place, if there is one.
  std::optional<std::size_t> rowAt(int x, int y, const MenuView& view) const;
  std::optional<std::size_t> submenuItemAt(int x, int y, const MenuView& view) const;
};

/// How many rows of the list are in view.
int listHeight(Size size, const MenuView& view, const Look& look);

/// The view's notice, broken into lines for a screen of that size.
std::vector<std::string> noticeLines(Size size, const MenuView& view, const Look& look);

MenuGeometry menuGeometry(Size size, const MenuView& view, const Look& look);

}  // namespace terminal
