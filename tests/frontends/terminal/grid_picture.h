#pragma once

#include <string>

#include "frontends/terminal/cell_grid.h"

namespace terminal {

/// What a reader sees in one row of the grid, without the blanks at its end.
inline std::string rowOf(const CellGrid& grid, int y) {
  std::string text;
  for (int x = 0; x < grid.size().width; ++x) text += grid.at(x, y).text();
  return text.substr(0, text.find_last_not_of(' ') + 1);
}

/// What a reader sees of the whole grid, a line for each row.
inline std::string pictureOf(const CellGrid& grid) {
  std::string picture;
  for (int y = 0; y < grid.size().height; ++y) picture += rowOf(grid, y) + "\n";
  return picture;
}

}  // namespace terminal
