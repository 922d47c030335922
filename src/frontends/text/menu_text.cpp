#include "frontends/text/menu_text.h"

#include <algorithm>
#include <functional>
#include <span>
#include <string_view>
#include <vector>

#include "frontends/terminal/cell_text.h"
#include "frontends/terminal/glyphs.h"
#include "text/blanks.h"
#include "text/display_line.h"
#include "ui/pressure_level.h"
#include "ui/row_glyphs.h"
#include "ui/strip_text.h"

namespace {

constexpr std::size_t kCells = 40;

/// One printed line; a row's is in columns.
struct Line {
  std::string name;     ///< of a row, with what stands before it; of another item, all of it
  std::string figure;   ///< what follows the name
  std::string process;  ///< what is said of a row's process; "" for another row
};

/// A separator between columns is two blanks wide, so a name must not contain any.
Line rowOf(const MenuItem& item, const MemoryPressureView& strip) {
  const std::string_view title = item.title;
  const auto [begin, end] = item.name;
  Line line{.name = text::displayLine(title)};
  if (begin < end) {
    line.name = text::displayLine(title.substr(0, begin)) +
                text::withSingleBlanks(text::displayLine(title.substr(begin, end - begin)));
    line.figure = text::displayLine(title.substr(end));
  }
  if (!item.process) return line;
  const std::int32_t pid = item.process->pid;
  line.process =
      std::string(RowGlyphs::kSeparator) + "pid " + std::to_string(pid) + segmentTag(strip, pid);
  const VordaProcess* const process = processOf(item);
  if (process != nullptr && process->isProtected) {
    line.process += std::string(RowGlyphs::kSeparator) + "owner " +
                    text::withSingleBlanks(text::displayName(process->ownerName));
  }
  return line;
}

Line lineOf(const MenuItem& item, const MemoryPressureView& strip) {
  if (item.kind == MenuItem::Kind::separator) return {};
  if (item.kind == MenuItem::Kind::strip) return {.name = stripText(strip)};
  return rowOf(item, strip);
}

/// The items up to where the commands begin, which nobody can choose here.
std::span<const MenuItem> withoutCommands(std::span<const MenuItem> items) {
  const auto command = std::ranges::find_if(items, isCommand);
  auto count = static_cast<std::size_t>(command - items.begin());
  const bool isCut = command != items.end();
  if (isCut && count > 0 && items[count - 1].kind == MenuItem::Kind::separator) --count;
  return items.first(count);
}

void pad(std::string& text, int columns) {
  const int missing = columns - terminal::columnsOf(text);
  if (missing > 0) text.append(static_cast<std::size_t>(missing), ' ');
}

/// Gives the columns of a section's rows one width each.
void align(std::span<Line> rows) {
  int name = 0;
  int figure = 0;
  for (const Line& row : rows) {
    if (!row.figure.empty()) name = std::max(name, terminal::columnsOf(row.name));
    if (!row.process.empty()) figure = std::max(figure, terminal::columnsOf(row.figure));
  }
  for (Line& row : rows) {
    if (!row.figure.empty()) pad(row.name, name);
    if (!row.process.empty()) pad(row.figure, figure);
  }
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

std::string menuText(const Menu& menu, CharacterSet characters) {
  const auto shown = [characters](const std::string& text) {
    return characters == CharacterSet::ascii ? terminal::inAscii(text) : text;
  };
  const auto found = stripOf(menu);
  const MemoryPressureView strip = found ? *found : MemoryPressureView();
  const std::span<const MenuItem> items = withoutCommands(menu.items);

  std::vector<Line> lines;
  for (const MenuItem& item : items) {
    const Line line = lineOf(item, strip);
    lines.push_back({shown(line.name), shown(line.figure), shown(line.process)});
  }
  for (std::size_t begin = 0; begin < items.size();) {
    std::size_t end = begin;
    while (end < items.size() && isSelectable(items[end])) ++end;
    align(std::span(lines).subspan(begin, end - begin));
    begin = end + 1;
  }
  std::string text;
  for (const Line& line : lines) text += line.name + line.figure + line.process + "\n";
  return text;
}
