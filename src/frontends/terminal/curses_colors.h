#pragma once

#include <optional>

#include "frontends/terminal/cell_grid.h"
#include "frontends/terminal/color_depth.h"

namespace terminal {

/// The curses library's colours on this terminal. curses must have been started.
class CursesColors {
 public:
  explicit CursesColors(ColorDepth depth);

  /// The library's number for a pair of colours; 0 is the terminal's own pair.
  int pairOf(const Style& style) const;

 private:
  int numberOf(const std::optional<Rgb>& color) const;

  ColorDepth depth_;
};

}  // namespace terminal
