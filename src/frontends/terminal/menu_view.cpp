#include "frontends/terminal/menu_view.h"

#include <algorithm>
#include <memory>
#include <utility>
#include <vector>

#include "frontends/terminal/menu_geometry.h"
#include "ui/row_search.h"

namespace terminal {
namespace {

/// What is selected when a submenu opens: the details, which change nothing, if it offers them.
std::size_t firstChoice(Items items) {
  for (std::size_t i = 0; i < items.size(); ++i) {
    if (items[i].action == Action::showDetails) return i;
  }
  return 0;
}

}  // namespace

Items MenuView::itemsBelow(const MenuItem& item) {
  return item.opens ? Items(*item.opens) : Items(item.submenu);
}

Items MenuView::rows() const {
  if (menu_ == nullptr) return {};
  const Items items(menu_->items);
  const bool stripFirst = !items.empty() && items.front().kind == MenuItem::Kind::strip;
  return stripFirst ? items.subspan(1) : items;
}

const MemoryPressureView* MenuView::strip() const {
  return menu_ == nullptr ? nullptr : stripOf(*menu_).get();
}

const MenuItem* MenuView::selectedRow() const {
  const auto index = cursor_.selected();
  return index && *index < rows().size() ? &rows()[*index] : nullptr;
}

bool MenuView::canFold() const {
  return whole_ != nullptr &&
         std::ranges::any_of(whole_->items, [](const MenuItem& item) { return item.isOfFamily; });
}

Items MenuView::submenuItems() const {
  if (selectedRow() == nullptr) return {};
  Items items(selectedRow()->submenu);
  for (const Outer& outer : outer_) {
    const auto index = findItem(items, outer.key);
    if (!index) return {};
    items = itemsBelow(items[*index]);
  }
  return items;
}

void MenuView::remember() {
  selectedKey_.reset();
  selectedItem_.reset();
  nextKey_.reset();
  const std::vector<ItemKey> keys = itemKeys(rows());
  const auto selected = cursor_.selected();
  for (std::size_t i = selected ? *selected + 1 : cursor_.restingBefore(); i < rows().size(); ++i) {
    if (!isSelectable(rows()[i])) continue;
    nextKey_ = keys[i];
    break;
  }
  if (selectedRow() == nullptr) return;
  selectedKey_ = keys[*selected];
  if (submenu_ && submenu_->selected()) {
    selectedItem_ = itemKeys(submenuItems())[*submenu_->selected()];
  }
}

void MenuView::rebuilt(std::shared_ptr<const Menu> menu, int height) {
  const bool isFirst = menu_ == nullptr;
  whole_ = std::move(menu);
  menu_ = shownMenu();
  const auto row = selectedKey_ ? findItem(rows(), *selectedKey_) : std::nullopt;
  if (row) {
    cursor_.follow(rows(), *row, height);
  } else if (isFirst) {
    cursor_.selectNearest(rows(), 0, height);
  } else {
    rest(height);
  }
  while (!outer_.empty() && submenuItems().empty()) {
    selectedItem_ = outer_.back().key;
    submenu_ = outer_.back().cursor;
    outer_.pop_back();
  }
  if (submenu_) {
    const auto item = selectedItem_ ? findItem(submenuItems(), *selectedItem_) : std::nullopt;
    selectInSubmenu(item.value_or(firstChoice(submenuItems())));
  }
  remember();
}

/// The selected row is gone: rests where it was, with nothing selected.
void MenuView::rest(int height) {
  closeSubmenu();
  // Rows above it may be gone too, so its index may be wrong. The row that was below it shows the
  // place, unless that row has moved to another section.
  std::size_t place = cursor_.selected().value_or(cursor_.restingBefore());
  const auto next = nextKey_ ? findItem(rows(), *nextKey_) : std::nullopt;
  if (next && itemKeys(rows())[*next].section == nextKey_->section) place = *next;
  cursor_.restBefore(rows(), place, height);
}

void MenuView::openSubmenu() {
  submenu_.emplace();
  selectInSubmenu(firstChoice(submenuItems()));
  remember();
}

void MenuView::closeSubmenu() {
  submenu_.reset();
  outer_.clear();
  selectedItem_.reset();
}

/// Closes the submenu if it is, or has become, empty.
void MenuView::selectInSubmenu(std::size_t index) {
  if (submenuItems().empty()) return closeSubmenu();
  submenu_->selectNearest(submenuItems(), index, static_cast<int>(submenuItems().size()));
}

void MenuView::resized(const MenuGeometry& geometry) {
  cursor_.clamp(rows(), geometry.list.height);
  cursor_.reveal(rows(), geometry.list.height);
  if (submenu_ && geometry.submenu) submenu_->reveal(submenuItems(), geometry.submenuHeight());
}

/// Selects the next row that has the words (step 1), the one before (-1), or this one if it has
/// them, else the next (0); from the other end where there is none.
void MenuView::find(int step, int height) {
  const std::string& words = find_.empty() ? filter_ : find_;
  const std::size_t count = rows().size();
  if (words.empty() || count == 0) return;
  std::size_t at = cursor_.selected().value_or(cursor_.restingBefore()) % count;
  if (step != 0) at = (at + (step > 0 ? 1 : count - 1)) % count;
  for (std::size_t i = 0; i < count; ++i) {
    if (RowSearch::matches(rows()[at], words)) return cursor_.select(rows(), at, height);
    at = (at + (step < 0 ? count - 1 : 1)) % count;
  }
}

/// The selection goes to the first match: what it was on may not be one.
void MenuView::applyFilter(int height) {
  if (whole_ == nullptr) return;
  menu_ = shownMenu();
  cursor_.selectNearest(rows(), 0, height);
}

std::shared_ptr<const Menu> MenuView::shownMenu() const {
  return filter_.empty() ? whole_ : RowSearch::filtered(*whole_, filter_);
}

void MenuView::selectNearest(std::size_t index, int height) {
  cursor_.selectNearest(rows(), index, height);
  remember();
}

std::string MenuView::prompt() const {
  if (typing_ == Typing::filter) return "Filter: " + filter_ + "_   Enter keeps it, Esc ends it";
  if (typing_ == Typing::find) return "Find: " + find_ + "_   Enter, then n and N go on";
  if (!filter_.empty()) return "Filter: " + filter_ + "   Esc ends it";
  return {};
}

MenuRequest MenuView::fold() {
  if (!isFolded_ && !canFold()) return {};
  isFolded_ = !isFolded_;
  return {MenuRequest::Kind::fold};
}

}  // namespace terminal
