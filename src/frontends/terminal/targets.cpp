#include "frontends/terminal/targets.h"

#include <cstddef>
#include <span>

#include "frontends/terminal/alert_view.h"
#include "frontends/terminal/menu_geometry.h"
#include "frontends/terminal/menu_view.h"

namespace terminal {
namespace {

Targets targetsOf(Size size, const AlertView& alert) {
  const Target any{.alert = &alert};
  Target focused = any;
  focused.item = alert.buttons()[alert.focused()];
  return {.size = size,
          .selection = focused,
          .asks = alert.buttons().size() > 1,
          .lines = std::vector(static_cast<std::size_t>(size.height), any)};
}

/// Of a line; where the submenu stands in it, of that. `rows` are the keys of the view's rows.
Target targetAt(int y, const MenuView& view, std::span<const ItemKey> rows,
                const MenuGeometry& geometry) {
  if (geometry.submenu && geometry.submenu->contains(geometry.submenu->x, y)) {
    const auto item = geometry.submenuItemAt(geometry.submenu->x + 1, y, view);
    return {.row = view.selectedKey(), .item = item ? view.submenuItems()[*item].title : "frame"};
  }
  if (y == geometry.keys.y) {  // a click there presses a key, which chooses the selection
    return {.row = view.selectedKey(),
            .item = view.submenuIsOpen() ? "keys of the submenu" : "keys"};
  }
  const auto row = geometry.rowAt(geometry.list.x, y, view);
  return row ? Target{.row = rows[*row]} : Target{};
}

}  // namespace

Targets targetsOf(Size size, const MenuView& view, const MenuGeometry& geometry,
                  const AlertView* alert) {
  if (alert != nullptr) return targetsOf(size, *alert);
  Targets targets{.size = size};
  const std::vector<ItemKey> rows = itemKeys(view.rows());
  for (int y = 0; y < size.height; ++y) targets.lines.push_back(targetAt(y, view, rows, geometry));
  if (view.selectedRow() == nullptr) return targets;

  targets.selection = Target{.row = view.selectedKey()};
  targets.selectionY =
      static_cast<int>(*view.cursor().selected()) - static_cast<int>(view.cursor().top());
  const auto item = view.submenuIsOpen() ? view.submenuCursor().selected() : std::nullopt;
  if (item) targets.selection->item = view.submenuItems()[*item].title;
  return targets;
}

}  // namespace terminal
