#include "frontends/terminal/frame_painter.h"

#include <algorithm>

#include "frontends/terminal/cell_text.h"

namespace terminal {

void paintFrame(CellGrid& grid, const Box& box, std::string_view title, const Style& style,
                const Glyphs& glyphs) {
  const int last = box.bottom() - 1;
  grid.fill(box, " ", {});
  grid.fill({box.x, box.y, box.width, 1}, glyphs.horizontal, style);
  grid.fill({box.x, last, box.width, 1}, glyphs.horizontal, style);
  grid.fill({box.x, box.y, 1, box.height}, glyphs.vertical, style);
  grid.fill({box.right() - 1, box.y, 1, box.height}, glyphs.vertical, style);
  grid.fill({box.x, box.y, 1, 1}, glyphs.topLeft, style);
  grid.fill({box.right() - 1, box.y, 1, 1}, glyphs.topRight, style);
  grid.fill({box.x, last, 1, 1}, glyphs.bottomLeft, style);
  grid.fill({box.right() - 1, last, 1, 1}, glyphs.bottomRight, style);

  const int room = box.width - 6;
  if (title.empty() || room < 1) return;
  const std::string shown = " " + fitted(title, room, glyphs.ellipsis) + " ";
  grid.write(box.x + 2, box.y, shown, style, box.width - 4);
}

void paintScrollBar(CellGrid& grid, int x, int y, int height, std::size_t top, std::size_t count,
                    const Glyphs& glyphs) {
  const auto rows = static_cast<std::size_t>(std::max(height, 0));
  if (rows == 0 || count <= rows) return;
  const std::size_t length = std::max<std::size_t>(rows * rows / count, 1);
  const std::size_t lastTop = count - rows;
  const std::size_t start = (rows - length) * std::min(top, lastTop) / lastTop;
  grid.fill({x, y + static_cast<int>(start), 1, static_cast<int>(length)}, glyphs.thumb,
            {.dim = true});
}

}  // namespace terminal
