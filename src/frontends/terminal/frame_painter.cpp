#include "frontends/terminal/frame_painter.h"

#include <algorithm>

#include "frontends/terminal/cell_text.h"

namespace terminal {

void paintFrame(CellGrid& grid, const Box& box, std::string_view title, const Style& style,
                const Signs& signs) {
  const int last = box.bottom() - 1;
  grid.fill(box, " ", {});
  grid.fill({box.x, box.y, box.width, 1}, signs.horizontal, style);
  grid.fill({box.x, last, box.width, 1}, signs.horizontal, style);
  grid.fill({box.x, box.y, 1, box.height}, signs.vertical, style);
  grid.fill({box.right() - 1, box.y, 1, box.height}, signs.vertical, style);
  grid.fill({box.x, box.y, 1, 1}, signs.topLeft, style);
  grid.fill({box.right() - 1, box.y, 1, 1}, signs.topRight, style);
  grid.fill({box.x, last, 1, 1}, signs.bottomLeft, style);
  grid.fill({box.right() - 1, last, 1, 1}, signs.bottomRight, style);

  const int room = box.width - 6;
  if (title.empty() || room < 1) return;
  const std::string shown = " " + fitted(title, room, signs.ellipsis) + " ";
  grid.write(box.x + 2, box.y, shown, style, box.width - 4);
}

void paintScrollBar(CellGrid& grid, int x, int y, int height, std::size_t top, std::size_t count,
                    const Signs& signs) {
  const auto rows = static_cast<std::size_t>(std::max(height, 0));
  if (rows == 0 || count <= rows) return;
  const std::size_t length = std::max<std::size_t>(rows * rows / count, 1);
  const std::size_t lastTop = count - rows;
  const std::size_t start = (rows - length) * std::min(top, lastTop) / lastTop;
  grid.fill({x, y + static_cast<int>(start), 1, static_cast<int>(length)}, signs.thumb,
            {.dim = true});
}

}  // namespace terminal
