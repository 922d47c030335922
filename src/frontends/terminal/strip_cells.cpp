#include "frontends/terminal/strip_cells.h"

#include <algorithm>
#include <cmath>

#include "ui/strip_text.h"

namespace terminal {

std::vector<StripCell> stripCells(const MemoryPressureView& strip, int columns) {
  if (columns <= 0) return {};
  const auto width = static_cast<std::size_t>(columns);
  std::vector<StripCell> cells(width);

  std::size_t x = 0;
  for (std::size_t i = 0; i < strip.segments.size() && x < width; ++i) {
    const std::size_t end = std::min(x + barLength(strip, i, width), width);
    cells[x].startsBar = true;
    for (; x < end; ++x) cells[x].segment = i;
    cells[x - 1].endsBar = true;
  }

  const auto marked = static_cast<std::size_t>(
      std::max(1L, std::lround(MemoryPressureView::kMarkerShare * columns)));
  for (std::size_t i = width - std::min(marked, width); i < width; ++i) cells[i].marker = true;
  return cells;
}

}  // namespace terminal
