#include "frontends/qt/menu_filling.h"

#include <algorithm>

#include "frontends/qt/item_action.h"
#include "frontends/qt/menu_keys.h"

namespace {

/// The actions that are shown, in order. The search for each begins behind the one found last.
class ShownActions {
 public:
  explicit ShownActions(const QMenu& menu) : actions_(menu.actions()) {}

  /// The next action with this key; nullptr if there is none. Actions that are skipped are
  /// obsolete.
  ItemAction* take(const std::string& key) {
    const auto from = actions_.cbegin() + next_;
    const auto found = std::find_if(from, actions_.cend(), [&key](QAction* action) {
      return static_cast<ItemAction*>(action)->key() == key;
    });
    if (found == actions_.cend()) return nullptr;
    obsolete_.append(QList<QAction*>(from, found));
    next_ = found - actions_.cbegin() + 1;
    return static_cast<ItemAction*>(*found);
  }

  /// The action behind the last one taken; nullptr at the end of the menu.
  QAction* following() const { return next_ < actions_.size() ? actions_[next_] : nullptr; }

  QList<QAction*> obsolete() const { return obsolete_ + actions_.mid(next_); }

 private:
  QList<QAction*> actions_;
  qsizetype next_ = 0;
  QList<QAction*> obsolete_;
};

void fillSubmenu(ItemAction& action, const std::function<void(QMenu&)>& onNewSubmenu) {
  const auto& item = action.item();
  if (item->submenu.empty()) return;
  if (action.menu() == nullptr) {
    action.setMenu(new QMenu);
    onNewSubmenu(*action.menu());
  }
  fillMenu(*action.menu(), {item, &item->submenu}, onNewSubmenu);
}

}  // namespace

void fillMenu(QMenu& menu, const std::shared_ptr<const std::vector<MenuItem>>& items,
              const std::function<void(QMenu&)>& onNewSubmenu) {
  const std::vector<std::string> keys = menuKeys(*items);
  ShownActions shown(menu);
  for (std::size_t i = 0; i < items->size(); ++i) {
    ItemAction* action = shown.take(keys[i]);
    const bool isNew = action == nullptr;
    if (isNew) action = new ItemAction(keys[i], &menu);
    action->setItem({items, &(*items)[i]});
    fillSubmenu(*action, onNewSubmenu);
    if (isNew) menu.insertAction(shown.following(), action);
  }
  // Removed last, because a visible menu closes when it is empty for a moment.
  for (QAction* action : shown.obsolete()) {
    menu.removeAction(action);
    action->deleteLater();
  }
}
