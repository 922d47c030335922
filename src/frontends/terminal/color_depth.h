#pragma once

#include <string_view>

#include "frontends/terminal/cell_grid.h"
#include "ui/color.h"

namespace terminal {

/// How many colours a terminal shows.
enum class ColorDepth { none, eight, palette256, direct };

/// What a terminal and the user's environment say about colour.
struct ColorHints {
  int colors = 0;              ///< as the terminal's description counts them; 0: none
  bool directByName = false;   ///< the description says that a colour's number is its RGB value
  std::string_view colorTerm;  ///< COLORTERM
  std::string_view noColor;    ///< NO_COLOR: any text at all forbids colour
};

ColorDepth colorDepth(const ColorHints& hints);

/// The nearest of the colours 16 to 255. The first 16 depend on the user's theme.
int nearestOf256(Rgb color);

/// The nearest of black, red, green, yellow, blue, magenta, cyan and white, 0 to 7.
int nearestOf8(Rgb color);

/// `color` painted over `ground`, which shows through as far as `color` is transparent.
Rgb painted(const Color& color, Rgb ground);

/// Black or white, whichever can be read on `ground`.
Rgb readableOn(Rgb ground);

}  // namespace terminal
