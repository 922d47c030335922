#include "ui/strip_description.h"

#include <cmath>

#include "scanner/memory_format.h"
#include "text/display_line.h"
#include "text/unicode.h"

std::string stripDescription(const MemoryPressureView& strip) {
  constexpr std::size_t kLongestName = 42;
  std::string words =
      "Memory " + std::to_string(std::lround(strip.pressure * 100)) + " percent used";
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
