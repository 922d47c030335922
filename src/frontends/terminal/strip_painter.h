#pragma once

#include "frontends/terminal/cell_grid.h"
#include "frontends/terminal/screen.h"
#include "ui/memory_pressure_view.h"

namespace terminal {

/// Draws the strip: bars in the colours of their processes, each begun by its letter. Without
/// colours each bar is a run of its letter.
void paintStrip(CellGrid& grid, const MemoryPressureView& strip, const Box& box, const Look& look);

/// "Memory pressure low", drawn so that it ends at the right end of the box.
void paintPressure(CellGrid& grid, const MemoryPressureView& strip, const Box& box,
                   const Look& look);

}  // namespace terminal
