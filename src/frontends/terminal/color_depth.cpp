#include "frontends/terminal/color_depth.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <limits>

namespace terminal {
namespace {

int squaredDistance(Rgb a, Rgb b) {
  const int red = a.red - b.red;
  const int green = a.green - b.green;
  const int blue = a.blue - b.blue;
  return 2 * red * red + 4 * green * green + 3 * blue * blue;  // the eye sees green best
}

constexpr std::array<std::uint8_t, 6> kCubeLevels{0, 95, 135, 175, 215, 255};

Rgb colorOf256(int index) {
  if (index >= 232) {
    const auto level = static_cast<std::uint8_t>(8 + 10 * (index - 232));
    return {level, level, level};
  }
  const auto cube = static_cast<std::size_t>(index - 16);
  return {kCubeLevels[cube / 36], kCubeLevels[cube / 6 % 6], kCubeLevels[cube % 6]};
}

std::uint8_t byteOf(double component) {
  return static_cast<std::uint8_t>(std::lround(std::clamp(component, 0.0, 1.0) * 255));
}

}  // namespace

ColorDepth colorDepth(const ColorHints& hints) {
  if (!hints.noColor.empty() || hints.colors < 8) return ColorDepth::none;
  const bool direct =
      hints.directByName || hints.colorTerm == "truecolor" || hints.colorTerm == "24bit";
  if (direct) return ColorDepth::direct;
  return hints.colors >= 256 ? ColorDepth::palette256 : ColorDepth::eight;
}

int nearestOf256(Rgb color) {
  int nearest = 16;
  int least = std::numeric_limits<int>::max();
  for (int index = 16; index < 256; ++index) {
    const int distance = squaredDistance(color, colorOf256(index));
    if (distance < least) {
      least = distance;
      nearest = index;
    }
  }
  return nearest;
}

int nearestOf8(Rgb color) {
  const auto [low, high] = std::minmax({color.red, color.green, color.blue});
  if (high - low < 40) return high < 100 ? 0 : 7;  // a grey
  // The hue decides: a component is on if it lies in the upper half between the least and the
  // greatest of the three.
  const int middle = (high + low) / 2;
  return (color.red > middle ? 1 : 0) + (color.green > middle ? 2 : 0) +
         (color.blue > middle ? 4 : 0);
}

Rgb painted(const Color& color, Rgb ground) {
  const auto mixed = [&](double above, std::uint8_t below) {
    return byteOf(above * color.alpha + below / 255.0 * (1 - color.alpha));
  };
  return {mixed(color.red, ground.red), mixed(color.green, ground.green),
          mixed(color.blue, ground.blue)};
}

Rgb readableOn(Rgb ground) {
  const double light = 0.299 * ground.red + 0.587 * ground.green + 0.114 * ground.blue;
  return light > 110 ? Rgb{0, 0, 0} : Rgb{255, 255, 255};
}

}  // namespace terminal
