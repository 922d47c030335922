#include "frontends/terminal/menu_geometry.h"

#include <algorithm>

#include "frontends/terminal/cell_text.h"
#include "frontends/terminal/menu_painter.h"
#include "frontends/terminal/menu_view.h"

namespace terminal {
namespace {

constexpr int kRoomyHeight = 16;      // from here on there is room for a header and rules
constexpr int kToolTipColumns = 110;  // what most tooltips take
constexpr int kTitleKeptInView = 18;  // so much of a row stays visible beside its submenu

/// The height of the header and of each rule: 0 on a low screen, where the list needs every row.
int ruleHeight(Size size) {
  return size.height >= kRoomyHeight ? 1 : 0;
}

int gpuTrackHeight(const MenuView& view) {
  return view.strip() != nullptr && view.strip()->gpu ? 1 : 0;
}

int toolTipLines(Size size) {
  if (size.height < kRoomyHeight) return 1;
  return std::clamp(kToolTipColumns / std::max(size.width, 1) + 1, 1, 3);
}

/// Places a submenu of that size beside its row if there is room, else below or above it, else
/// over it.
Box submenuBox(Size screen, int rowY, int rowEnd, int width, int height) {
  Box box{rowEnd + 2, rowY - 1, std::min(width, screen.width), std::min(height, screen.height)};
  const int rightmost = screen.width - box.width;
  box.x = std::min(box.x, rightmost);
  const bool hidesItsRow = box.x < std::min(rowEnd, kTitleKeptInView);
  if (hidesItsRow) {
    const bool fitsBelow = rowY + 1 + box.height <= screen.height;
    const bool fitsAbove = rowY - box.height >= 0;
    box.x = std::clamp(4, 0, std::max(rightmost, 0));
    if (fitsBelow || fitsAbove) box.y = fitsBelow ? rowY + 1 : rowY - box.height;
  }
  box.y = std::clamp(box.y, 0, screen.height - box.height);
  return box;
}

std::optional<Box> boxOfOpenSubmenu(Size screen, const Box& list, const MenuView& view,
                                    const Look& look) {
  if (!view.submenuIsOpen()) return std::nullopt;
  int width = 0;
  for (const MenuItem& item : view.submenuItems()) {
    width = std::max(width, columnsOf(look.glyphs.line(shownTitle(item)), screen.width));
  }
  const auto index = static_cast<int>(*view.cursor().selected());
  const int rowY = list.y + index - static_cast<int>(view.cursor().top());
  const int rowEnd = list.x + columnsOfRow(*view.selectedRow(), view, look);
  return submenuBox(screen, std::clamp(rowY, list.y, list.bottom() - 1), rowEnd, width + 4,
                    static_cast<int>(view.submenuItems().size()) + 2);
}

std::optional<std::size_t> itemAt(const Box& box, int x, int y, std::size_t top,
                                  std::size_t count) {
  if (!box.contains(x, y)) return std::nullopt;
  const std::size_t index = top + static_cast<std::size_t>(y - box.y);
  return index < count ? std::optional(index) : std::nullopt;
}

}  // namespace

std::optional<std::size_t> MenuGeometry::rowAt(int x, int y, const MenuView& view) const {
  return itemAt(list, x, y, view.cursor().top(), view.rows().size());
}

std::optional<std::size_t> MenuGeometry::submenuItemAt(int x, int y, const MenuView& view) const {
  if (!submenu) return std::nullopt;
  const Box inside{submenu->x + 1, submenu->y + 1, submenu->width - 2, submenu->height - 2};
  return itemAt(inside, x, y, view.submenuCursor().top(), view.submenuItems().size());
}

std::vector<std::string> noticeLines(Size size, const MenuView& view, const Look& look) {
  if (view.notice().empty()) return {};
  const std::size_t most = size.height < kRoomyHeight ? 2 : 4;
  const int room = size.width - 2;
  std::vector<std::string> lines = wrapped(look.glyphs.lines(view.notice()), room);
  if (lines.size() > most) {
    lines.resize(most);
    lines.back() = fitted(lines.back() + look.glyphs.line("…"), room, look.glyphs.ellipsis);
  }
  return lines;
}

int listHeight(Size size, const MenuView& view, const Look& look) {
  const auto notice = static_cast<int>(noticeLines(size, view, look).size());
  return size.height - 3 * ruleHeight(size) - 2 - gpuTrackHeight(view) - toolTipLines(size) -
         notice;
}

MenuGeometry menuGeometry(Size size, const MenuView& view, const Look& look) {
  MenuGeometry geometry;
  int y = 0;
  const auto next = [&](int height) {
    const Box box{0, y, size.width, height};
    y += height;
    return box;
  };
  geometry.header = next(ruleHeight(size));
  geometry.strip = next(1);
  geometry.gpuTrack = next(gpuTrackHeight(view));
  geometry.topRule = next(ruleHeight(size));
  geometry.list = next(listHeight(size, view, look));
  geometry.bottomRule = next(ruleHeight(size));
  geometry.toolTip = next(toolTipLines(size));
  geometry.notice = next(static_cast<int>(noticeLines(size, view, look).size()));
  geometry.keys = next(1);
  geometry.submenu = boxOfOpenSubmenu(size, geometry.list, view, look);
  return geometry;
}

}  // namespace terminal
