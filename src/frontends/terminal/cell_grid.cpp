#include "frontends/terminal/cell_grid.h"

#include <algorithm>

#include "frontends/terminal/cell_text.h"

namespace terminal {

CellGrid::CellGrid(Size size)
    : size_{std::max(size.width, 0), std::max(size.height, 0)},
      cells_(static_cast<std::size_t>(size_.width) * static_cast<std::size_t>(size_.height)) {}

const Cell& CellGrid::at(int x, int y) const {
  return cells_[static_cast<std::size_t>(y) * static_cast<std::size_t>(size_.width) +
                static_cast<std::size_t>(x)];
}

Cell* CellGrid::cell(int x, int y) {
  const bool inside = Box{0, 0, size_.width, size_.height}.contains(x, y);
  return inside ? const_cast<Cell*>(&at(x, y)) : nullptr;
}

void CellGrid::put(int x, int y, std::string_view bytes, int columns, const Style& style) {
  Cell* const target = cell(x, y);
  if (target == nullptr || bytes.size() > Cell::kCapacity) return;

  // Writing over half of a wide character erases the other half.
  if (target->columns == 0) *cell(x - 1, y) = Cell{.style = cell(x - 1, y)->style};
  if (Cell* const last = cell(x + columns - 1, y); last != nullptr && last->columns == 2) {
    *cell(x + columns, y) = Cell{.style = cell(x + columns, y)->style};
  }

  std::ranges::copy(bytes, target->bytes.begin());
  target->length = static_cast<std::uint8_t>(bytes.size());
  target->columns = static_cast<std::uint8_t>(columns);
  target->style = style;
  if (columns == 2) *cell(x + 1, y) = Cell{.length = 0, .columns = 0, .style = style};
}

int CellGrid::write(int x, int y, std::string_view text, const Style& style, int columns,
                    std::string_view ellipsis) {
  const std::string shown = fitted(text, std::min(columns, size_.width - x), ellipsis);
  std::string_view rest = shown;
  int taken = 0;
  while (!rest.empty()) {
    const CellText next = firstCellText(rest);
    if (next.columns > 0) put(x + taken, y, next.bytes, next.columns, style);
    taken += next.columns;
    rest.remove_prefix(next.source.size());
  }
  return taken;
}

void CellGrid::fill(const Box& box, std::string_view character, const Style& style) {
  for (int y = box.y; y < box.bottom(); ++y) {
    for (int x = box.x; x < box.right(); ++x) put(x, y, character, 1, style);
  }
}

}  // namespace terminal
