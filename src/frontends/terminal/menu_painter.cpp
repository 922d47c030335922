#include "frontends/terminal/menu_painter.h"

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

#include "frontends/terminal/cell_text.h"
#include "frontends/terminal/color_depth.h"
#include "frontends/terminal/footer.h"
#include "frontends/terminal/frame_painter.h"
#include "frontends/terminal/menu_geometry.h"
#include "frontends/terminal/menu_view.h"
#include "frontends/terminal/strip_painter.h"
#include "text/format.h"
#include "ui/pressure_level.h"
#include "ui/row_remarks.h"

namespace terminal {
namespace {

constexpr int kLabelX = 1;
constexpr int kTitleX = 3;  // to the right of the dot
constexpr Style kFaint{.dim = true};

std::string tagOf(const MenuItem& row, const MenuView& view) {
  return rowTag(row, view.rows(), view.strip());
}

bool isLabel(const MenuItem& item) {
  return item.kind == MenuItem::Kind::item && !item.enabled;
}

/// The summary at the top looks like any row; headings, which follow a separator, are bold; other
/// labels are faint.
Style labelStyle(Items rows, std::size_t index) {
  if (isHeading(rows[index])) return {.bold = true};
  for (std::size_t i = 0; i < index; ++i) {
    if (rows[i].kind == MenuItem::Kind::separator) return kFaint;
  }
  return {};
}

void paintRow(CellGrid& grid, const Box& place, const MenuView& view, std::size_t index,
              const Look& look) {
  const MenuItem& row = view.rows()[index];
  if (row.kind == MenuItem::Kind::separator) return;  // shown as an empty line
  const std::string title = look.glyphs.line(row.title);
  const int room = place.width - 2;  // the last column is the scroll bar's
  if (isLabel(row)) {
    grid.write(kLabelX, place.y, title, labelStyle(view.rows(), index), room - kLabelX,
               look.glyphs.ellipsis);
    return;
  }

  const bool selected = view.cursor().selected() == index;
  const std::string tag = tagOf(row, view);
  const int tagColumns = columnsOf(tag);
  const Style style{.reverse = selected};
  if (selected) grid.fill({kTitleX - 1, place.y, room - kTitleX + 2, 1}, " ", style);
  if (row.dot) {
    const Style dot{.foreground = painted(*row.dot, Rgb{})};
    grid.write(kLabelX, place.y, look.glyphs.dot, look.colored ? dot : Style{}, 1);
  }
  const int written =
      grid.write(kTitleX, place.y, title, style, room - kTitleX - tagColumns, look.glyphs.ellipsis);
  grid.write(kTitleX + written, place.y, tag, selected ? style : kFaint, tagColumns);
}

void paintList(CellGrid& grid, const MenuView& view, const Box& list, const Look& look) {
  const std::size_t top = view.cursor().top();
  for (int i = 0; i < list.height; ++i) {
    const std::size_t index = top + static_cast<std::size_t>(i);
    if (index >= view.rows().size()) break;
    paintRow(grid, {list.x, list.y + i, list.width, 1}, view, index, look);
  }
  paintScrollBar(grid, list.right() - 1, list.y, list.height, top, view.rows().size(), look.glyphs);
}

/// What else is known of the selected row's process: for how long it has been running, and where.
std::string lifeOf(const MenuItem& row, const MenuView& view, const Glyphs& glyphs) {
  std::string life;
  if (const std::string age = runningTime(row); !age.empty()) life += glyphs.line(" · ") + age;
  if (!view.folder().empty()) life += glyphs.line(" · in " + view.folder());
  return life;
}

/// The tooltip's lines in a row, and after its owner `life`. Where they do not all fit, the first
/// line is left out if the row shows it anyway: the full name.
std::string joinedToolTip(const MenuItem& row, const std::string& life, int columns,
                          const Glyphs& glyphs) {
  std::string_view rest = row.toolTip;
  const std::string_view name = rest.substr(0, rest.find('\n'));
  const bool shown = row.title.find(name) != std::string::npos && name.size() < rest.size();
  std::string joined;
  for (;;) {
    const std::string_view line = rest.substr(0, rest.find('\n'));
    joined += glyphs.line(line);
    if (row.toolTip.size() - rest.size() + line.size() == row.ownerEnd) joined += life;
    if (line.size() == rest.size()) break;
    joined += glyphs.line(" · ");
    rest.remove_prefix(line.size() + 1);
  }
  if (!shown || columnsOf(joined, columns) <= columns) return joined;
  return joined.substr(glyphs.line(name).size() + glyphs.line(" · ").size());
}

void paintToolTip(CellGrid& grid, const MenuView& view, const Box& box, const Look& look) {
  const MenuItem* row = view.selectedRow();
  if (row == nullptr || row->toolTip.empty()) return;
  const std::string joined =
      joinedToolTip(*row, lifeOf(*row, view, look.glyphs), box.width * box.height - 8, look.glyphs);
  // Cut to what the box holds before wrapping: a name may be a hundred thousand characters long.
  const int room = box.width - 2;
  const std::vector<std::string> lines = wrapped(fitted(joined, room * (box.height + 1)), room);
  const auto shown = std::min(lines.size(), static_cast<std::size_t>(box.height));
  for (std::size_t i = 0; i < shown; ++i) {
    const bool cut = i + 1 == shown && shown < lines.size();
    const std::string line = cut ? lines[i] + " " + lines[i + 1] : lines[i];
    grid.write(kLabelX, box.y + static_cast<int>(i), line, {}, room, look.glyphs.ellipsis);
  }
}

void paintNotice(CellGrid& grid, const MenuView& view, const Box& box, const Look& look) {
  const Style style{.foreground = look.warning(), .bold = true};
  const std::vector<std::string> lines = noticeLines(grid.size(), view, look);
  for (std::size_t i = 0; i < lines.size(); ++i) {
    grid.write(kLabelX, box.y + static_cast<int>(i), lines[i], style, box.width - kLabelX);
  }
}

/// The hint, if there is one, else the keys that work now.
void paintKeys(CellGrid& grid, const MenuView& view, const Box& box, const Look& look) {
  const std::string words = view.hint().empty() ? view.prompt() : view.hint();
  if (!words.empty()) {
    grid.write(kLabelX, box.y, look.glyphs.line(words), {.bold = true}, box.width - 2,
               look.glyphs.ellipsis);
    return;
  }
  for (const FooterKey& key : footerKeys(view, box, look.glyphs)) {
    grid.write(key.place.x, box.y, key.name, {.bold = true}, box.width);
    grid.write(key.place.x + columnsOf(key.name) + 1, box.y, key.meaning, kFaint, box.width);
  }
}

void paintSubmenu(CellGrid& grid, const MenuView& view, const MenuGeometry& geometry,
                  const Look& look) {
  const Box& box = *geometry.submenu;
  const Items items = view.submenuItems();
  const ListCursor& cursor = view.submenuCursor();
  paintFrame(grid, box, {}, {}, look.glyphs);
  for (int i = 0; i < geometry.submenuHeight(); ++i) {
    const std::size_t index = cursor.top() + static_cast<std::size_t>(i);
    if (index >= items.size()) break;
    const int y = box.y + 1 + i;
    const MenuItem& item = items[index];
    if (item.kind == MenuItem::Kind::separator) {
      grid.fill({box.x + 1, y, box.width - 2, 1}, look.glyphs.horizontal, kFaint);
      continue;
    }
    const bool selected = cursor.selected() == index;
    const Style style = isLabel(item) ? kFaint : Style{.reverse = selected};
    if (selected) grid.fill({box.x + 1, y, box.width - 2, 1}, " ", style);
    grid.write(box.x + 2, y, look.glyphs.line(shownTitle(item)), style, box.width - 4,
               look.glyphs.ellipsis);
  }
  paintScrollBar(grid, box.right() - 1, box.y + 1, geometry.submenuHeight(), cursor.top(),
                 items.size(), look.glyphs);
}

}  // namespace

int columnsOfRow(const MenuItem& row, const MenuView& view, const Look& look) {
  return kTitleX + columnsOf(look.glyphs.line(row.title)) + columnsOf(tagOf(row, view));
}

void paintMenu(CellGrid& grid, const MenuView& view, const MenuGeometry& geometry,
               const std::string& title, const Look& look) {
  if (geometry.header.height > 0) {
    grid.write(kLabelX, geometry.header.y, look.glyphs.line(title), {.bold = true},
               geometry.header.width, look.glyphs.ellipsis);
  }
  if (const MemoryPressureView* strip = view.strip()) {
    paintStrip(grid, *strip, geometry.strip, look);
    paintGpuTrack(grid, *strip, geometry.gpuTrack, look);
    if (geometry.header.height > 0) paintPressure(grid, *strip, geometry.header, look);
  }
  grid.fill(geometry.topRule, look.glyphs.horizontal, kFaint);
  grid.fill(geometry.bottomRule, look.glyphs.horizontal, kFaint);
  paintList(grid, view, geometry.list, look);
  paintToolTip(grid, view, geometry.toolTip, look);
  paintNotice(grid, view, geometry.notice, look);
  paintKeys(grid, view, geometry.keys, look);
  if (geometry.submenu) paintSubmenu(grid, view, geometry, look);
}

void paintTooSmall(CellGrid& grid, const MenuView& view, const Look& look) {
  std::vector<std::string> lines;
  if (const MemoryPressureView* strip = view.strip()) {
    lines.push_back(std::to_string(percentUsed(strip->pressure)) + "% used");
  }
  const auto largest = std::ranges::find_if(
      view.rows(), [](const MenuItem& row) { return row.process.has_value(); });
  if (largest != view.rows().end()) lines.push_back(look.glyphs.line(largest->title));
  lines.push_back(text::format("Vorda needs %d x %d", kSmallestSize.width, kSmallestSize.height));
  if (grid.size().height == 1 && lines.size() > 2) lines.front() += "  " + lines[1];
  for (std::size_t i = 0; i < lines.size(); ++i) {
    grid.write(0, static_cast<int>(i), lines[i], {}, grid.size().width, look.glyphs.ellipsis);
  }
}

}  // namespace terminal
