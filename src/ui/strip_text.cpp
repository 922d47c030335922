#include "ui/strip_text.h"

#include <algorithm>
#include <cmath>

#include "scanner/memory_format.h"
#include "text/display_line.h"
#include "text/unicode.h"

long percentUsed(const MemoryPressureView& strip) {
  return std::lrint(strip.pressure * 100);
}

std::string stripDescription(const MemoryPressureView& strip) {
  constexpr std::size_t kLongestName = 42;
  std::string words = "Memory " + std::to_string(percentUsed(strip)) + " percent used";
  const char* separator = ": ";
  for (const Segment& segment : strip.segments) {
    const std::string figure = MemoryFormat::compact(segment.memMB);
    words += separator +
             text::shortened(text::displayName(segment.label), kLongestName, kLongestName - 1) +
             ' ' + figure.substr(figure.find_first_not_of(' '));
    separator = ", ";
  }
  return words;
}

char segmentLetter(std::size_t place) {
  return place < 26 ? static_cast<char>('A' + place) : '+';
}

std::string segmentTag(const MemoryPressureView& strip, std::int32_t pid) {
  const auto found = std::ranges::find(strip.segments, pid, &Segment::pid);
  if (found == strip.segments.end()) return "";
  const char letter = segmentLetter(static_cast<std::size_t>(found - strip.segments.begin()));
  return std::string("  [") + letter + "]";
}

std::size_t segmentLength(const MemoryPressureView& strip, std::size_t place, std::size_t columns) {
  const auto track = static_cast<double>(columns);
  const double share = strip.segments[place].fraction * strip.scale() * track;
  return static_cast<std::size_t>(std::clamp(share, 1.0, track));
}
