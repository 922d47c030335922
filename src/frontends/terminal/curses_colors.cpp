#include "frontends/terminal/curses_colors.h"

#include <curses.h>

#include <algorithm>
#include <cstddef>

namespace terminal {
namespace {

constexpr int kOwnColor = -1;  // the terminal's

/// With eight colours the ground that is shown may be darker or lighter than the one asked for, so
/// what is readable depends on the shown one.
int readableOnEight(int ground) {
  const bool dark = ground == COLOR_BLACK || ground == COLOR_RED || ground == COLOR_BLUE ||
                    ground == COLOR_MAGENTA;
  return dark ? COLOR_WHITE : COLOR_BLACK;
}

}  // namespace

CursesColors::CursesColors(ColorDepth depth) : depth_(depth) {
  if (depth_ == ColorDepth::none) return;
  start_color();
  use_default_colors();
}

/// All 240 are compared for each; what is painted has some dozen colours.
int CursesColors::nearestNumber(Rgb color) {
  constexpr std::size_t kMostKept = 256;
  const auto known = std::ranges::find(nearest_, color, &std::pair<Rgb, int>::first);
  if (known != nearest_.end()) return known->second;
  if (nearest_.size() == kMostKept) nearest_.clear();
  return nearest_.emplace_back(color, nearestOf256(color)).second;
}

int CursesColors::numberOf(const std::optional<Rgb>& color) {
  if (!color) return kOwnColor;
  switch (depth_) {
    case ColorDepth::none:
      return kOwnColor;
    case ColorDepth::eight:
      return nearestOf8(*color);
    case ColorDepth::palette256:
      return nearestNumber(*color);
    case ColorDepth::direct:
      break;
  }
  return color->red << 16 | color->green << 8 | color->blue;
}

int CursesColors::pairOf(const Style& style) {
  if (!style.foreground && !style.background) return 0;
  int foreground = numberOf(style.foreground);
  const int background = numberOf(style.background);
  const bool lettering = style.foreground && style.background;
  if (depth_ == ColorDepth::eight && lettering) foreground = readableOnEight(background);
  if (depth_ == ColorDepth::none) return 0;
  const int pair = alloc_pair(foreground, background);
  return pair < 0 ? 0 : pair;
}

}  // namespace terminal
