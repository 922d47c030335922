#pragma once

#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "frontends/terminal/list_cursor.h"
#include "frontends/terminal/screen.h"
#include "ui/item_key.h"
#include "ui/menu.h"

namespace terminal {

struct MenuGeometry;

/// What the user asks for beyond moving about in the menu.
struct MenuRequest {
  enum class Kind {
    nothing,
    openSubmenu,
    closeSubmenu,
    perform,
    refresh,
    showKeys,
    copyCommand,  ///< of the selected row's process
    showCommand,  ///< the same, as plain output
    showMore,     ///< all rows of the selected section
    showMatches,  ///< only rows that pass the filter, which is new
    fold,         ///< fold families, or unfold them, as isFolded() says
    sort,         ///< in the next order (sortAfter)
    quit
  };

  Kind kind = Kind::nothing;
  std::shared_ptr<const MenuItem> item;  ///< of Kind::perform
};

/// The key or letter that a function or control key stands for; all else stands for itself.
Input withoutShortcut(Input input);

/// The menu as it is being used: what is selected, what is in view, whether the selected
/// row's submenu is open.
class MenuView {
 public:
  /// The menu was built anew. The selection stays on the same thing. When that is gone, nothing is
  /// selected until the user moves: an Enter that comes now was meant for what is gone. An open
  /// submenu stays with its row, and its selection on its item; it closes when the row is gone.
  void rebuilt(std::shared_ptr<const Menu> menu, int height);

  Items rows() const;  ///< without the strip, which does not scroll
  const MemoryPressureView* strip() const;
  const ListCursor& cursor() const { return cursor_; }
  const MenuItem* selectedRow() const;
  /// What the selected row is about, if one is selected.
  const std::optional<ItemKey>& selectedKey() const { return selectedKey_; }

  /// What stands above the last line: lines joined by "\n"; "" for nothing.
  ///@{
  const std::string& notice() const { return notice_; }
  void setNotice(std::string notice) { notice_ = std::move(notice); }
  ///@}

  /// What the last line says in place of the keys; "" for nothing.
  ///@{
  const std::string& hint() const { return hint_; }
  void setHint(std::string hint) { hint_ = std::move(hint); }
  ///@}

  /// Where the selected row's process works, as it may be shown; "" for unknown.
  ///@{
  const std::string& folder() const { return folder_; }
  void setFolder(std::string folder) { folder_ = std::move(folder); }
  ///@}

  /// Whether there are families, and whether each is to be folded into one row.
  ///@{
  bool canFold() const;
  bool isFolded() const { return isFolded_; }
  ///@}

  /// Whether letters are words to look for.
  bool isTyping() const { return typing_ != Typing::nothing; }
  /// The words stay.
  void endTyping() { typing_ = Typing::nothing; }
  /// The words that every row shown has; "" for all rows.
  const std::string& filter() const { return filter_; }
  /// What the last line says of looking for words; "" for nothing.
  std::string prompt() const;
  /// Selects the row at this index, or the nearest that can be.
  void selectNearest(std::size_t index, int height);

  bool submenuIsOpen() const { return submenu_.has_value(); }
  Items submenuItems() const;                                    ///< of the innermost
  const ListCursor& submenuCursor() const { return *submenu_; }  ///< of the innermost

  /// Opens the selected row's submenu, if it has one, and selects in it what does no harm: the
  /// details.
  void openSubmenu();
  void closeSubmenu();

  /// Moves as the key or click says; `geometry` is that of the menu on screen.
  MenuRequest handle(const Input& input, const MenuGeometry& geometry);
  /// The window has another size: keeps the selection in view.
  void resized(const MenuGeometry& geometry);

 private:
  static Items itemsBelow(const MenuItem& item);
  MenuRequest handleInList(const Input& input, int height);
  MenuRequest handleInSubmenu(const Input& input, int height);
  MenuRequest handleTyping(const Input& input, int height);
  MenuRequest handleLetter(char32_t letter, int height);
  void find(int step, int height);
  void applyFilter(int height);
  std::shared_ptr<const Menu> shownMenu() const;
  MenuRequest handleClick(const Input& input, const MenuGeometry& geometry);
  MenuRequest choose(bool performs);
  MenuRequest performing(const MenuItem& item) const;
  MenuRequest chooseInSubmenu(std::size_t index);
  void selectInSubmenu(std::size_t index);
  MenuRequest fold();
  void rest(int height);
  void remember();

  /// A submenu in which another one is open.
  struct Outer {
    ListCursor cursor;
    ItemKey key;  ///< of the item whose submenu is open
  };

  std::shared_ptr<const Menu> whole_;  ///< as it was built
  std::shared_ptr<const Menu> menu_;   ///< as it is shown: whole or filtered
  bool isFolded_ = false;

  enum class Typing { nothing, filter, find };
  Typing typing_ = Typing::nothing;
  std::string filter_;
  std::string find_;  ///< what n and N look for
  std::string notice_;
  std::string hint_;
  std::string folder_;
  ListCursor cursor_;
  std::optional<ItemKey> selectedKey_;
  std::optional<ItemKey> nextKey_;  ///< of the row below the selection
  std::optional<ListCursor> submenu_;
  std::vector<Outer> outer_;             ///< outermost first
  std::optional<ItemKey> selectedItem_;  ///< of the innermost submenu, while it is open
};

}  // namespace terminal
