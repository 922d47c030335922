#include "ui/short_menu.h"

#include <algorithm>
#include <iterator>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "ui/menu_builders.h"
#include "ui/menu_limits.h"
#include "ui/menu_sections.h"

namespace ShortMenu {
namespace {

using Items = std::vector<MenuItem>;
using MenuConstruction::kLargestOnGpuSummary;
using MenuConstruction::kLargestSummary;
using MenuConstruction::kLaunchAgentsHeader;
using MenuConstruction::kServersHeader;
using MenuConstruction::kServersSummary;
using MenuConstruction::kToolsHeader;
using MenuConstruction::kTopGpuHeader;
using MenuConstruction::kTopHeader;
using MenuConstruction::kTrainingHeader;
using MenuConstruction::kTrainingSummary;

bool isSeparator(const MenuItem& item) {
  return item.kind == MenuItem::Kind::separator;
}

/// The lines between the strip and the first section.
Items summary(const Menu& full) {
  const auto first = std::next(full.items.begin());
  return {first, std::find_if(first, full.items.end(), isSeparator)};
}

/// The rows below a header; empty when the menu has no such section.
Items section(const Menu& full, std::string_view header) {
  const auto found = std::ranges::find_if(
      full.items, [header](const MenuItem& item) { return !item.enabled && item.title == header; });
  if (found == full.items.end()) return {};
  const auto first = std::next(found);
  return {first, std::find_if(first, full.items.end(), isSeparator)};
}

/// The row with the action that opens its submenu as a separate menu. Items without a submenu are
/// not changed.
MenuItem plainRow(MenuItem row) {
  if (!row.submenu.empty()) row.action = Action::openRow;
  return row;
}

Items plainRows(Items rows, std::size_t limit) {
  rows.resize(std::min(rows.size(), limit));
  std::ranges::transform(rows, rows.begin(), plainRow);
  return rows;
}

/// A section as a submenu; `line` is its title.
MenuItem sectionItem(const MenuItem& line, const Items& rows, std::size_t limit) {
  MenuItem item{.title = line.title, .name = line.name};
  const bool allFit = rows.size() <= limit;
  item.submenu = plainRows(rows, allFit ? limit : limit - 1);
  if (!allFit) item.submenu.push_back(MenuBuilders::command("More in Vorda…", Action::openMenu));
  return item;
}

/// A header without the dashes on either side of it.
std::string bare(std::string_view header) {
  constexpr std::string_view kDash = "— ";
  return std::string(header.substr(kDash.size(), header.size() - 2 * kDash.size()));
}

/// Adds a section, titled with the summary's line about it if there is one, else with its header.
void addSection(Items& items, const Items& summary, std::string_view beginning,
                std::string_view header, const Items& rows, std::size_t limit) {
  if (rows.empty()) return;
  const auto line = std::ranges::find_if(summary, [beginning](const auto& item) {
    return !beginning.empty() && item.title.starts_with(beginning) &&
           (beginning == kLargestOnGpuSummary || !item.title.starts_with(kLargestOnGpuSummary));
  });
  items.push_back(
      sectionItem(line != summary.end() ? *line : MenuBuilders::label(bare(header)), rows, limit));
}

void addCommand(Items& items, const Menu& full, Action action) {
  const auto found = std::ranges::find(full.items, action, &MenuItem::action);
  if (found != full.items.end()) items.push_back(*found);
}

}  // namespace

Room roomOn(int screenLines) {
  // The shell's panel and margins; five processes and all other items; eight rows of an open
  // section.
  constexpr int kLinesForAll = 58 + 605 + 8 * 39;
  return screenLines >= kLinesForAll ? Room::plenty : Room::little;
}

Menu of(const Menu& full, Room room) {
  if (full.items.empty()) return full;
  const Items lines = summary(full);
  const std::size_t limit =
      room == Room::plenty ? MenuLimits::kMaxShortRows : MenuLimits::kMaxShortRowsInLittleRoom;

  Menu menu;
  Items& items = menu.items;
  items.push_back(full.items.front());
  items.push_back(MenuBuilders::command("Open Vorda…", Action::openMenu));
  // The summary's other lines are not needed: the largest processes follow right below.
  if (!lines.empty()) items.push_back(lines.front());
  items.push_back(MenuBuilders::separator());
  Items largest = section(full, kTopHeader);
  largest.resize(std::min(largest.size(), MenuLimits::kMaxShortLargest));
  if (room == Room::plenty) {
    std::ranges::move(plainRows(std::move(largest), MenuLimits::kMaxShortLargest),
                      std::back_inserter(items));
    items.push_back(MenuBuilders::separator());
  } else {
    std::erase_if(largest, [](const MenuItem& row) { return !row.enabled; });
    addSection(items, lines, kLargestSummary, kTopHeader, largest, limit);
  }
  for (const auto& [header, summarised] :
       {std::pair{kTopGpuHeader, kLargestOnGpuSummary},
        std::pair{kTrainingHeader, kTrainingSummary}, std::pair{kServersHeader, kServersSummary},
        std::pair{kToolsHeader, ""}, std::pair{kLaunchAgentsHeader, ""}}) {
    addSection(items, lines, summarised, header, section(full, header), limit);
  }
  if (!isSeparator(items.back())) items.push_back(MenuBuilders::separator());
  addCommand(items, full, Action::about);
  addCommand(items, full, Action::quitApp);
  return menu;
}

Menu ofRow(const MenuItem& row) {
  MenuItem title = row;
  title.action = Action::none;
  title.enabled = false;
  title.submenu.clear();

  Menu menu;
  menu.items.push_back(std::move(title));
  const Items& opened = row.opens ? *row.opens : row.submenu;
  menu.items.insert(menu.items.end(), opened.begin(), opened.end());
  return menu;
}

std::optional<Menu> ofProcess(const Menu& full, const ProcessReference& process) {
  const auto isIt = [&process](const MenuItem& item) { return item.process == process; };
  for (const MenuItem& item : full.items) {
    if (isIt(item)) return ofRow(item);
    if (item.action != Action::showMore) continue;
    const auto row = std::ranges::find_if(item.submenu, isIt);
    if (row != item.submenu.end()) return ofRow(*row);
  }
  return std::nullopt;
}

}  // namespace ShortMenu
