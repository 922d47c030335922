#pragma once

#include <string>

#include "frontends/terminal/cell_grid.h"

namespace terminal {

/// What a reader sees of the grid: its rows, a line each, without the blanks at their ends.
inline std::string pictureOf(const CellGrid& grid) {
  std::string picture;
  for (int y = 0; y < grid.size().height; ++y) picture += grid.row(y) + "\n";
  return picture;
}

}  // namespace terminal
