#include "frontends/terminal/menu_view.h"

#include <algorithm>
#include <memory>
#include <utility>
#include <vector>

#include "frontends/terminal/menu_geometry.h"
#include "frontends/terminal/row_search.h"
#include "text/scalar.h"
#include "ui/family_items.h"

namespace terminal {
namespace {

constexpr int kWheelRows = 3;
constexpr std::size_t kMostWords = 256;  // in bytes, of what is looked for

/// What is selected when a submenu opens: the details, which change nothing, if it offers them.
std::size_t firstChoice(Items items) {
  for (std::size_t i = 0; i < items.size(); ++i) {
    if (items[i].action == Action::showDetails) return i;
  }
  return 0;
}

Items itemsBelow(const MenuItem& item) {
  return item.opens ? Items(*item.opens) : Items(item.submenu);
}

using Request = MenuRequest::Kind;

/// Handles the keys that work in every list; false for any other key.
bool moved(ListCursor& cursor, Items items, const Input& input, int height) {
  switch (input.kind) {
    case Input::Kind::up:
      cursor.moveUp(items, height);
      return true;
    case Input::Kind::down:
      cursor.moveDown(items, height);
      return true;
    case Input::Kind::pageUp:
      cursor.pageUp(items, height);
      return true;
    case Input::Kind::pageDown:
      cursor.pageDown(items, height);
      return true;
    case Input::Kind::home:
      cursor.home(items, height);
      return true;
    case Input::Kind::end:
      cursor.end(items, height);
      return true;
    case Input::Kind::wheelUp:
      cursor.scroll(items, -kWheelRows, height);
      return true;
    case Input::Kind::wheelDown:
      cursor.scroll(items, kWheelRows, height);
      return true;
    default:
      return false;
  }
}

/// The letters that stand for keys.
Input translated(Input input) {
  if (input.kind != Input::Kind::character) return input;
  if (input.character == U'j') input.kind = Input::Kind::down;
  if (input.character == U'k') input.kind = Input::Kind::up;
  if (input.character == U'g') input.kind = Input::Kind::home;
  if (input.character == U'G') input.kind = Input::Kind::end;
  return input;
}

MenuRequest requestOf(char32_t character) {
  switch (character) {
    case U's':
      return {Request::sort};
    case U'r':
      return {Request::refresh};
    case U'q':
      return {Request::quit};
    case U'?':
      return {Request::showKeys};
    default:
      return {};
  }
}

}  // namespace

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
  return whole_ != nullptr && std::ranges::any_of(whole_->items, [](const MenuItem& item) {
           return item.folded != nullptr;
         });
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

MenuRequest MenuView::handle(const Input& input, const MenuGeometry& geometry) {
  const int height = geometry.list.height;
  if (isTyping() && input.kind != Input::Kind::click) {
    MenuRequest request = handleTyping(input, height);
    remember();
    return request;
  }
  const Input key = translated(input);
  MenuRequest request;
  if (key.kind == Input::Kind::character && key.character == U'f') {
    if (!submenu_) fold(geometry.list.height);
  } else if (key.kind == Input::Kind::character) {
    request = handleLetter(key.character, height);
  } else if (key.kind == Input::Kind::find && !submenu_) {
    typing_ = Typing::find;
    find_.clear();
  } else if (key.kind == Input::Kind::escape && !submenu_ && !filter_.empty()) {
    filter_.clear();
    request = {Request::showMatches};
  } else if (key.kind == Input::Kind::click) {
    request = handleClick(key, geometry);
  } else if (submenu_) {
    request = handleInSubmenu(key, geometry.submenuHeight());
  } else {
    request = handleInList(key, geometry.list.height);
  }
  remember();
  return request;
}

MenuRequest MenuView::handleLetter(char32_t letter, int height) {
  if (submenu_) return letter == U's' ? MenuRequest{} : requestOf(letter);
  switch (letter) {
    case U'/':
      typing_ = Typing::filter;
      return {Request::showMatches};
    case U'n':
    case U'N':
      find(letter == U'n' ? 1 : -1, height);
      return {};
    default:
      return requestOf(letter);
  }
}

/// Line ends, which a paste may bring, are no letters.
MenuRequest MenuView::handleTyping(const Input& input, int height) {
  std::string& words = typing_ == Typing::filter ? filter_ : find_;
  const bool filters = typing_ == Typing::filter;
  switch (input.kind) {
    case Input::Kind::enter:
      typing_ = Typing::nothing;
      return {};
    case Input::Kind::escape:
      typing_ = Typing::nothing;
      words.clear();
      return {filters ? Request::showMatches : Request::nothing};
    case Input::Kind::character:
      if (input.character == kBackspace) {
        words.resize(words.size() - text::lastCharacter(words).size());
      } else if (input.character >= U' ' && words.size() < kMostWords) {
        text::appendScalar(static_cast<std::uint32_t>(input.character), words);
      }
      if (filters) {
        applyFilter(height);
      } else {
        find(0, height);
      }
      return {};
    default:
      moved(cursor_, rows(), input, height);
      return {};
  }
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
    if (matches(rows()[at], words)) return cursor_.select(rows(), at, height);
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
  if (!filter_.empty()) return filtered(*whole_, filter_);
  return isFolded_ ? std::make_shared<const Menu>(foldedMenu(*whole_)) : whole_;
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

/// The request keeps its menu alive: a new one may be built before the action runs.
MenuRequest MenuView::performing(const MenuItem& item) const {
  return {Request::perform, {menu_, &item}};
}

/// What Enter (or Right, which opens but never performs) does with the selection.
MenuRequest MenuView::choose(bool performs) {
  const MenuItem* row = selectedRow();
  if (row == nullptr) return {};
  if (row->action == Action::showMore) return {Request::showMore};
  if (!row->submenu.empty()) return {Request::openSubmenu};
  if (performs && row->action != Action::none) return performing(*row);
  return {};
}

void MenuView::fold(int height) {
  if (whole_ == nullptr || (!isFolded_ && !canFold())) return;
  isFolded_ = !isFolded_;
  rebuilt(whole_, height);
}

MenuRequest MenuView::handleInList(const Input& input, int height) {
  if (moved(cursor_, rows(), input, height)) return {};
  const bool enter = input.kind == Input::Kind::enter;
  return enter || input.kind == Input::Kind::right ? choose(enter) : MenuRequest{};
}

MenuRequest MenuView::handleInSubmenu(const Input& input, int height) {
  if (moved(*submenu_, submenuItems(), input, height)) return {};
  if (input.kind == Input::Kind::left || input.kind == Input::Kind::escape) {
    if (!outer_.empty()) {
      submenu_ = outer_.back().cursor;
      outer_.pop_back();
      return {};
    }
    closeSubmenu();
    return {Request::closeSubmenu};
  }
  const auto index = submenu_->selected();
  const bool opens =
      input.kind == Input::Kind::right && index && !itemsBelow(submenuItems()[*index]).empty();
  if (!index || (input.kind != Input::Kind::enter && !opens)) return {};
  return chooseInSubmenu(*index);
}

/// Performs the item, or opens what is below it.
MenuRequest MenuView::chooseInSubmenu(std::size_t index) {
  const MenuItem& item = submenuItems()[index];
  if (itemsBelow(item).empty()) return performing(item);
  outer_.push_back({*submenu_, itemKeys(submenuItems())[index]});
  submenu_.emplace();
  selectInSubmenu(firstChoice(submenuItems()));
  return {};
}

MenuRequest MenuView::handleClick(const Input& input, const MenuGeometry& geometry) {
  if (submenu_ && geometry.submenu && geometry.submenu->contains(input.x, input.y)) {
    const auto index = geometry.submenuItemAt(input.x, input.y, *this);
    if (!index || !isSelectable(submenuItems()[*index])) return {};
    submenu_->select(submenuItems(), *index, geometry.submenuHeight());
    return chooseInSubmenu(*index);
  }

  const bool wasOpen = submenu_.has_value();
  closeSubmenu();
  const auto index = geometry.rowAt(input.x, input.y, *this);
  if (!index || !isSelectable(rows()[*index])) {
    return {wasOpen ? Request::closeSubmenu : Request::nothing};
  }
  const bool onItsOwnRow = wasOpen && cursor_.selected() == index;
  cursor_.select(rows(), *index, geometry.list.height);
  if (onItsOwnRow) return {Request::closeSubmenu};
  return choose(true);
}

}  // namespace terminal
