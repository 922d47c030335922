#include "ui/row_search.h"

#include <string>

#include "text/contains.h"
#include "ui/menu_builders.h"

namespace RowSearch {

bool matches(const MenuItem& row, std::string_view words) {
  const bool isRow = isSelectable(row) && !row.submenu.empty() && row.action != Action::showMore;
  if (!isRow) return false;
  if (text::containsInAnyCase(row.title, words)) return true;
  const VordaProcess* const process = processOf(row);
  return process != nullptr && (text::containsInAnyCase(process->displayName, words) ||
                                text::contains(std::to_string(process->pid), words) ||
                                text::containsInAnyCase(process->ownerName, words) ||
                                text::containsInAnyCase(process->commandLine, words));
}

std::shared_ptr<const Menu> filtered(const Menu& menu, std::string_view words) {
  auto found = std::make_shared<Menu>();
  const MenuItem* heading = nullptr;
  for (const MenuItem& item : menu.items) {
    if (item.kind == MenuItem::Kind::strip) found->items.push_back(item);
    if (isHeading(item)) heading = &item;
    if (!matches(item, words)) continue;
    if (heading != nullptr) {
      found->items.push_back(MenuBuilders::separator());
      found->items.push_back(*heading);
      heading = nullptr;
    }
    found->items.push_back(item);
  }
  const bool isEmpty = found->items.empty() || found->items.back().strip != nullptr;
  if (isEmpty) found->items.push_back(MenuBuilders::label("(nothing matches)"));
  return found;
}

}  // namespace RowSearch
