#pragma once

#include <optional>
#include <utility>
#include <vector>

#include "frontends/terminal/cell_grid.h"
#include "frontends/terminal/color_depth.h"

namespace terminal {

/// The curses library's colours on this terminal. curses must have been started.
class CursesColors {
 public:
  explicit CursesColors(ColorDepth depth);

  /// The library's number for a pair of colours; 0 is the terminal's own pair.
  int pairOf(const Style& style);

 private:
  int numberOf(const std::optional<Rgb>& color);
  int nearestNumber(Rgb color);

  ColorDepth depth_;
  std::vector<std::pair<Rgb, int>> nearest_;  ///< those that were looked up; few
};

}  // namespace terminal
