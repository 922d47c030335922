#include "frontends/text/menu_text.h"

#include <algorithm>
#include <functional>
#include <span>

#include "text/blanks.h"
#include "text/display_line.h"
#include "ui/row_parts.h"
#include "ui/strip_text.h"

namespace {

constexpr std::size_t kCells = 40;

/// Programs that read the lines split them at two blanks, so a name must not contain any.
std::string titleLine(const MenuItem& item) {
  const std::string_view title = item.title;
  const auto [begin, end] = item.name;
  return text::displayLine(title.substr(0, begin)) +
         text::withSingleBlanks(text::displayLine(title.substr(begin, end - begin))) +
         text::displayLine(title.substr(end));
}

std::string itemLine(const MenuItem& item, const MemoryPressureView& strip) {
  if (item.kind == MenuItem::Kind::separator) return "";
  if (item.kind == MenuItem::Kind::strip) return stripText(strip);
  std::string line = titleLine(item);
  if (item.process) {
    const std::int32_t pid = item.process->pid;
    line +=
        std::string(RowParts::kSeparator) + "pid " + std::to_string(pid) + segmentTag(strip, pid);
  }
  return line;
}

std::string trackText(std::span<const Segment> segments, double pressure,
                      const std::function<char(std::size_t)>& letterOf) {
  std::string cells;
  for (std::size_t i = 0; i < segments.size(); ++i) {
    cells.append(segmentLength(segments, i, kCells), letterOf(i));
  }
  cells.resize(std::min(cells.size(), kCells));

  std::string line = "[" + cells;
  for (std::size_t cell = cells.size(); cell < kCells; ++cell) line += "·";
  return line + "]  " + std::to_string(percentUsed(pressure)) + "%";
}

}  // namespace

std::string stripText(const MemoryPressureView& strip) {
  std::string lines = trackText(strip.segments, strip.pressure, segmentLetter);
  if (!strip.gpu) return lines;
  const auto letter = [&strip](std::size_t place) { return gpuSegmentLetter(strip, place); };
  return lines + "\n" + trackText(strip.gpu->segments, strip.gpu->pressure, letter) + "  GPU";
}

std::string menuText(const Menu& menu) {
  const auto found = stripOf(menu);
  const MemoryPressureView strip = found ? *found : MemoryPressureView();
  std::string text;
  for (const MenuItem& item : menu.items) text += itemLine(item, strip) + "\n";
  return text;
}
