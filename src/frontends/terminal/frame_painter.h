#pragma once

#include "frontends/terminal/cell_grid.h"
#include "frontends/terminal/glyphs.h"

namespace terminal {

/// Clears a box and draws a frame around it, with `title` in its upper edge.
void paintFrame(CellGrid& grid, const Box& box, std::string_view title, const Style& style,
                const Glyphs& glyphs);

/// Draws a scroll bar's thumb in the column `x`: which part of a list is in view. Draws nothing
/// when all of the list is in view.
void paintScrollBar(CellGrid& grid, int x, int y, int height, std::size_t top, std::size_t count,
                    const Glyphs& glyphs);

}  // namespace terminal
