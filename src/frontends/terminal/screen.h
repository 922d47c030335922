#pragma once

#include <optional>

#include "frontends/terminal/cell_grid.h"
#include "frontends/terminal/glyphs.h"
#include "frontends/terminal/input.h"

namespace terminal {

/// What the terminal can show.
struct Look {
  Glyphs glyphs = Glyphs::unicode();
  bool colored = true;

  /// The colour of what warns; none where there are no colours.
  std::optional<Rgb> warning() const {
    return colored ? std::optional(Rgb{230, 160, 30}) : std::nullopt;
  }
};

/// A terminal with its keys and its clock, as far as the menu needs them.
class Screen {
 public:
  virtual ~Screen() = default;

  virtual const Look& look() const = 0;
  virtual Size size() const = 0;
  virtual void draw(const CellGrid& grid) = 0;

  /// The next thing that happens; Kind::nothing after that many seconds. Without a time it
  /// waits until something happens.
  virtual Input nextInput(std::optional<double> seconds) = 0;

  /// Runs a system monitor on the terminal until it is left. False where it can't, or where there
  /// is a display for a monitor with a window.
  virtual bool runSystemMonitor() { return false; }

  /// Seconds on a clock that only goes forward.
  virtual double now() const = 0;
};

}  // namespace terminal
