#include "ui/strip_text.h"

#include <algorithm>
#include <optional>

#include "scanner/memory_format.h"
#include "text/display_line.h"
#include "ui/name_limits.h"
#include "ui/pressure_level.h"

namespace {

/// "Memory 62 percent used: Ollama Server 4.1 GB"
std::string trackDescription(const std::string& what, std::span<const Segment> segments,
                             double pressure) {
  std::string words = what + " " + std::to_string(percentUsed(pressure)) + " percent used";
  const char* separator = ": ";
  for (const Segment& segment : segments) {
    words += separator +
             NameLimits::cut(text::displayName(segment.label), NameLimits::kProcessName) + ' ' +
             MemoryFormat::inSentence(segment.memMB);
    separator = ", ";
  }
  return words;
}

std::optional<std::size_t> placeOf(std::span<const Segment> segments, std::int32_t pid) {
  const auto found = std::ranges::find(segments, pid, &Segment::pid);
  if (found == segments.end()) return std::nullopt;
  return static_cast<std::size_t>(found - segments.begin());
}

}  // namespace

std::string stripDescription(const MemoryPressureView& strip) {
  std::string words = trackDescription("Memory", strip.segments, strip.pressure);
  if (strip.gpu)
    words += "; " + trackDescription("GPU memory", strip.gpu->segments, strip.gpu->pressure);
  return words;
}

char segmentLetter(std::size_t place) {
  return place < 26 ? static_cast<char>('A' + place) : '+';
}

char gpuSegmentLetter(const MemoryPressureView& strip, std::size_t place) {
  std::size_t letter = strip.segments.size();
  for (std::size_t i = 0; i <= place; ++i) {
    const auto above = placeOf(strip.segments, strip.gpu->segments[i].pid);
    if (i == place) return segmentLetter(above.value_or(letter));
    if (!above) ++letter;
  }
  return segmentLetter(letter);
}

std::string segmentTag(const MemoryPressureView& strip, std::int32_t pid) {
  std::optional<char> letter;
  if (const auto place = placeOf(strip.segments, pid)) {
    letter = segmentLetter(*place);
  } else if (const auto below = strip.gpu ? placeOf(strip.gpu->segments, pid) : std::nullopt) {
    letter = gpuSegmentLetter(strip, *below);
  }
  return letter ? std::string("  [") + *letter + "]" : "";
}

std::size_t segmentLength(std::span<const Segment> segments, std::size_t place,
                          std::size_t columns) {
  const auto track = static_cast<double>(columns);
  const double share = segments[place].fraction * scaleOf(segments) * track;
  return static_cast<std::size_t>(std::clamp(share, 1.0, track));
}
