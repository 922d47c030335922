#include "ui/folded_menu.h"

#include <set>

Menu foldedMenu(const Menu& menu) {
  Menu folded;
  std::set<const MenuItem*> seen;  // in this section
  for (const MenuItem& item : menu.items) {
    if (isHeading(item) || item.kind == MenuItem::Kind::separator) seen.clear();
    if (!item.folded) {
      folded.items.push_back(item);
    } else if (seen.insert(item.folded.get()).second) {
      folded.items.push_back(*item.folded);
    }
  }
  return folded;
}
