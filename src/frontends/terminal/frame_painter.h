#pragma once

#include "frontends/terminal/cell_grid.h"
#include "frontends/terminal/glyphs.h"

namespace terminal {

/// Clears a box and draws a frame around it, with `title` in its upper edge.
void paintFrame(CellGrid& grid, const Box& box, std::string_view title, const Style& style,
                const Glyphs& glyphs);

/// Where one is in a list that is longer than its view: a thumb in the column `x`. Draws
/// nothing for a list that is all in view.
void paintScrollBar(CellGrid& grid, int x, int y, int height, std::size_t top, std::size_t count,
                    const Glyphs& glyphs);

}  // namespace terminal
