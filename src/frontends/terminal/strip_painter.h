#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <vector>

#include "frontends/terminal/cell_grid.h"
#include "frontends/terminal/screen.h"
#include "ui/memory_pressure_view.h"

namespace terminal {

/// One column of the strip.
struct StripCell {
  std::optional<std::size_t> segment;  ///< the one that covers it; none: empty track
  bool startsSegment = false;
  bool endsSegment = false;
  bool showsPressure = false;  ///< the pressure is drawn over it

  bool operator==(const StripCell&) const = default;
};

/// The strip in that many columns: each segment its share of them, rounded down but at least one,
/// as far as there is room; the pressure over the rightmost 8 %, at least one.
std::vector<StripCell> stripCells(std::span<const Segment> segments, int columns);

/// Draws the strip: segments in the colours of their processes, each begun by its letter. Without
/// colours each segment is a run of its letter.
void paintStrip(CellGrid& grid, const MemoryPressureView& strip, const Box& box, const Look& look);

/// Draws the track of the cards, if the strip has one: half as high where the terminal has glyphs
/// for that, with the letters of the strip above for who is in both.
void paintGpuTrack(CellGrid& grid, const MemoryPressureView& strip, const Box& box,
                   const Look& look);

/// "Memory pressure low", drawn so that it ends at the right end of the box.
void paintPressure(CellGrid& grid, const MemoryPressureView& strip, const Box& box,
                   const Look& look);

}  // namespace terminal
