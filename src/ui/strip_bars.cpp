#include "ui/strip_bars.h"

#include <algorithm>

char barLetter(std::size_t place) {
  return place < 26 ? static_cast<char>('A' + place) : '+';
}

std::string barTag(const MemoryPressureView& strip, std::int32_t pid) {
  const auto bar = std::find_if(strip.segments.begin(), strip.segments.end(),
                                [pid](const Segment& segment) { return segment.pid == pid; });
  if (bar == strip.segments.end()) return "";
  const char letter = barLetter(static_cast<std::size_t>(bar - strip.segments.begin()));
  return std::string("  [") + letter + "]";
}

std::size_t barLength(const MemoryPressureView& strip, std::size_t place, std::size_t columns) {
  const auto track = static_cast<double>(columns);
  const double share = strip.segments[place].fraction * strip.scale() * track;
  return static_cast<std::size_t>(std::clamp(share, 1.0, track));
}
