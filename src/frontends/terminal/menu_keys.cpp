// Which key or click does what in the menu. What a key is called: keys_help.cpp.

#include "frontends/terminal/menu_geometry.h"
#include "frontends/terminal/menu_view.h"
#include "text/scalar.h"

namespace terminal {
namespace {

using Request = MenuRequest::Kind;

constexpr int kWheelRows = 3;
constexpr char32_t kControlD = 0x04;
constexpr char32_t kControlU = 0x15;
constexpr std::size_t kMostWords = 256;  // in bytes, of what is looked for

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

/// A key, or a letter.
Input meaningOfFunctionKey(char32_t number) {
  switch (number) {
    case 1:
      return {.kind = Input::Kind::character, .character = U'?'};
    case 3:
      return {.kind = Input::Kind::find};
    case 4:
      return {.kind = Input::Kind::character, .character = U'/'};
    case 9:
      return {.kind = Input::Kind::right};
    case 10:
      return {.kind = Input::Kind::character, .character = U'q'};
    default:
      return {.kind = Input::Kind::other};
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
    case U'c':
      return {Request::copyCommand};
    case U'C':
      return {Request::showCommand};
    default:
      return {};
  }
}

}  // namespace

Input withoutShortcut(Input input) {
  if (input.kind == Input::Kind::function) {
    const Input meant = meaningOfFunctionKey(input.character);
    input.kind = meant.kind;
    input.character = meant.character;
  } else if (input.kind == Input::Kind::character &&
             (input.character == kControlD || input.character == kControlU)) {
    input.kind = input.character == kControlD ? Input::Kind::pageDown : Input::Kind::pageUp;
    input.character = 0;
  }
  return input;
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
    if (!submenu_) request = fold();
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
        words.resize(words.size() - text::lastScalar(words).size());
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

/// Performs the item, or opens what is below it.
MenuRequest MenuView::chooseInSubmenu(std::size_t index) {
  const MenuItem& item = submenuItems()[index];
  if (itemsBelow(item).empty()) return performing(item);
  outer_.push_back({*submenu_, itemKeys(submenuItems())[index]});
  openSubmenu();
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
