#include "frontends/terminal/strip_painter.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <string>
#include <string_view>

#include "frontends/terminal/cell_text.h"
#include "frontends/terminal/color_depth.h"
#include "text/format.h"
#include "ui/pressure_level.h"
#include "ui/strip_text.h"

namespace terminal {
namespace {

constexpr Rgb kTrack{38, 38, 38};
constexpr Color kDivider = Color::white(0, 0.5);
constexpr int kPercentColumns = 6;  // "  100%"

std::string_view pressureGlyph(PressureLevel level, const Glyphs& glyphs) {
  switch (level) {
    case PressureLevel::low:
      return glyphs.pressureLow;
    case PressureLevel::medium:
      return glyphs.pressureMedium;
    case PressureLevel::high:
      break;
  }
  return glyphs.pressureHigh;
}

/// One of the strip's tracks, as it is to be painted.
struct Track {
  const std::vector<Segment>& segments;
  double pressure;
  std::function<char(std::size_t)> letter;
  std::string_view fill;  ///< what a segment is painted with, in its colour; " ": the ground is
};

/// Without colours: letters and glyphs.
void paintPlain(CellGrid& grid, const Track& shown, const Box& track, const Look& look) {
  const std::vector<StripCell> cells = stripCells(shown.segments, track.width - 2);
  grid.write(track.x, track.y, "[", {}, 1);
  int x = track.x + 1;
  for (const StripCell& cell : cells) {
    if (cell.showsPressure) {
      grid.write(x, track.y, pressureGlyph(pressureLevel(shown.pressure), look.glyphs), {}, 1);
    } else if (cell.segment) {
      grid.write(x, track.y, std::string(1, shown.letter(*cell.segment)), {}, 1);
    } else {
      grid.write(x, track.y, look.glyphs.emptyTrack, {}, 1);
    }
    ++x;
  }
  grid.write(x, track.y, "]", {}, 1);
}

void paintColored(CellGrid& grid, const Track& shown, const Box& track, const Look& look) {
  const std::vector<StripCell> cells = stripCells(shown.segments, track.width);
  const Rgb pressure = painted(pressureColor(pressureLevel(shown.pressure)).withAlpha(1), kTrack);
  const bool isThin = shown.fill != " ";
  int x = track.x;
  for (const StripCell& cell : cells) {
    const Rgb segment =
        cell.segment ? painted(shown.segments[*cell.segment].color, kTrack) : kTrack;
    const Rgb ground = cell.showsPressure ? pressure : segment;
    Style style{.foreground = readableOn(ground), .background = ground};
    std::string glyph = " ";
    if (cell.startsSegment) {
      glyph = shown.letter(*cell.segment);
    } else if (isThin) {
      glyph = shown.fill;
      style = {.foreground = ground};
    } else if (cell.endsSegment) {
      glyph = look.glyphs.divider;
      style.foreground = painted(kDivider, ground);
    }
    grid.write(x, track.y, glyph, style, 1);
    ++x;
  }
}

void paintTrack(CellGrid& grid, const Track& shown, const Box& box, const Look& look) {
  if (box.height < 1) return;
  const Box track{box.x + 1, box.y, box.width - 2 - kPercentColumns, 1};
  if (look.colored) {
    paintColored(grid, shown, track, look);
  } else {
    paintPlain(grid, shown, track, look);
  }
  const auto percent = text::format("%5ld%%", percentUsed(shown.pressure));
  grid.write(track.right(), box.y, percent, {}, kPercentColumns);
}

}  // namespace

std::vector<StripCell> stripCells(std::span<const Segment> segments, int columns) {
  if (columns <= 0) return {};
  const auto width = static_cast<std::size_t>(columns);
  std::vector<StripCell> cells(width);

  std::size_t x = 0;
  for (std::size_t i = 0; i < segments.size() && x < width; ++i) {
    const std::size_t end = std::min(x + segmentLength(segments, i, width), width);
    cells[x].startsSegment = true;
    for (; x < end; ++x) cells[x].segment = i;
    cells[x - 1].endsSegment = true;
  }

  const auto marked = static_cast<std::size_t>(
      std::max(1L, std::lround(MemoryPressureView::kPressureShare * columns)));
  for (std::size_t i = width - std::min(marked, width); i < width; ++i)
    cells[i].showsPressure = true;
  return cells;
}

void paintStrip(CellGrid& grid, const MemoryPressureView& strip, const Box& box, const Look& look) {
  paintTrack(grid, {strip.segments, strip.pressure, segmentLetter, " "}, box, look);
}

void paintGpuTrack(CellGrid& grid, const MemoryPressureView& strip, const Box& box,
                   const Look& look) {
  if (!strip.gpu) return;
  const auto letter = [&strip](std::size_t place) { return gpuSegmentLetter(strip, place); };
  paintTrack(grid, {strip.gpu->segments, strip.gpu->pressure, letter, look.glyphs.thin}, box, look);
}

void paintPressure(CellGrid& grid, const MemoryPressureView& strip, const Box& box,
                   const Look& look) {
  const PressureLevel level = pressureLevel(strip.pressure);
  const std::string words = std::string("Memory pressure ") + pressureWord(level);
  // Bold rather than yellow on white: the ground is the terminal's own.
  const Style style{.bold = look.colored && level != PressureLevel::low};
  const int columns = columnsOf(words);
  grid.write(box.right() - 1 - columns, box.y, words, style, columns);
}

}  // namespace terminal
