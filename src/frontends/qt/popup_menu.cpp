#include "frontends/qt/popup_menu.h"

#include <QGuiApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QScreen>
#include <QWidgetAction>
#include <algorithm>
#include <functional>
#include <utility>
#include <vector>

#include "frontends/qt/accessible_menu.h"
#include "frontends/qt/dot_icon.h"
#include "frontends/qt/menu_label.h"
#include "frontends/qt/qt_text.h"
#include "frontends/qt/screen_place.h"
#include "frontends/qt/strip_widget.h"
#include "frontends/qt/wayland/menu_surface.h"
#include "ui/glyph_stand_ins.h"
#include "ui/item_key.h"
#include "ui/spoken_menu.h"

namespace {

/// One item in a QMenu. What it is about never changes; what it says may. The strip's item holds
/// the strip as a widget.
class ItemAction : public QWidgetAction {
 public:
  ItemAction(ItemKey key, QMenu* menu) : QWidgetAction(menu), key_(std::move(key)) {}
  ~ItemAction() override { delete menu(); }

  const ItemKey& key() const { return key_; }
  const std::shared_ptr<const MenuItem>& item() const { return item_; }

  /// Shows `item`, which is about the same as what was shown before.
  void setItem(std::shared_ptr<const MenuItem> item);

  /// Draws the strip anew, if this is its item.
  void refreshStrip();

  /// Shows the title anew.
  void refreshTitle();

 private:
  ItemKey key_;
  std::shared_ptr<const MenuItem> item_;
};

void ItemAction::setItem(std::shared_ptr<const MenuItem> item) {
  const bool newDot = item_ == nullptr ? item->dot.has_value() : item->dot != item_->dot;
  item_ = std::move(item);
  setSeparator(item_->kind == MenuItem::Kind::separator);
  refreshTitle();
  setData(plainToolTip(item_->toolTip));
  setStatusTip(toQString(item_->toolTip));  // what screen readers say (accessible_menu.h)
  setEnabled(item_->enabled);
  if (newDot) setIcon(item_->dot ? dotIcon(*item_->dot) : QIcon());
  if (item_->strip && defaultWidget() == nullptr) setDefaultWidget(new StripWidget);
  refreshStrip();
}

/// The rows are English: a menu that is laid out from right to left would turn them round.
QString fromLeftToRight(const QString& label, Qt::LayoutDirection menu) {
  if (menu == Qt::LeftToRight || label.isEmpty()) return label;
  return QChar(0x2066) + label + QChar(0x2069);  // LRI … PDI
}

void ItemAction::refreshTitle() {
  const auto& menu = *static_cast<const QMenu*>(parent());
  const QFont font = menu.font();
  const QString label =
      toQString(withStandIns(menuLabel(shownTitle(*item_)).toStdString(),
                             [&font](std::string_view glyph) { return isDrawn(glyph, font); }));
  setText(fromLeftToRight(label, menu.layoutDirection()));
  setProperty(kSpokenName, toQString(spokenTitle(*item_)));
}

void ItemAction::refreshStrip() {
  if (!item_->strip) return;
  setProperty(kSpokenName, toQString(spokenTitle(*item_)));
  static_cast<StripWidget*>(defaultWidget())->setStrip(item_->strip);
}

using Items = std::shared_ptr<const std::vector<MenuItem>>;
using OnNewSubmenu = std::function<void(QMenu&, ItemAction&)>;

void fillMenu(QMenu& menu, const Items& items, const OnNewSubmenu& onNewSubmenu);

/// The actions that are shown, in order; each is looked for once, never before the last
/// one found.
class ShownActions {
 public:
  explicit ShownActions(const QMenu& menu) : actions_(menu.actions()) {}

  /// The next action that has this key; nullptr for none. What is skipped is obsolete.
  ItemAction* take(const ItemKey& key) {
    const auto from = actions_.cbegin() + next_;
    const auto found = std::find_if(from, actions_.cend(), [&key](QAction* action) {
      return static_cast<ItemAction*>(action)->key() == key;
    });
    if (found == actions_.cend()) return nullptr;
    obsolete_.append(QList<QAction*>(from, found));
    next_ = found - actions_.cbegin() + 1;
    return static_cast<ItemAction*>(*found);
  }

  /// What stands behind the last one taken; nullptr for the end of the menu.
  QAction* following() const { return next_ < actions_.size() ? actions_[next_] : nullptr; }

  QList<QAction*> obsolete() const { return obsolete_ + actions_.mid(next_); }

 private:
  QList<QAction*> actions_;
  qsizetype next_ = 0;
  QList<QAction*> obsolete_;
};

/// A submenu that many rows share is filled only when it is opened.
void fillLater(ItemAction& action, const OnNewSubmenu& onNewSubmenu) {
  if (action.menu() != nullptr) return;
  auto* const menu = new ScrollingMenu;
  action.setMenu(menu);
  onNewSubmenu(*menu, action);
  QObject::connect(menu, &QMenu::aboutToShow, &action, [&action, menu, onNewSubmenu] {
    const auto& item = action.item();
    if (item->opens) fillMenu(*menu, item->opens, onNewSubmenu);
  });
}

void fillSubmenu(ItemAction& action, const OnNewSubmenu& onNewSubmenu) {
  const auto& item = action.item();
  if (item->opens) return fillLater(action, onNewSubmenu);
  if (item->submenu.empty()) {
    delete action.menu();
    return;
  }
  if (action.menu() == nullptr) {
    action.setMenu(new ScrollingMenu);
    onNewSubmenu(*action.menu(), action);
  }
  fillMenu(*action.menu(), {item, &item->submenu}, onNewSubmenu);
}

/// Makes `menu` show `items`, submenus and all, as ItemActions, each of which shares their life.
/// An item that is about the same as one that is shown already takes its place, so that the user's
/// choice and an open submenu stay. A visible menu stays open. `onNewSubmenu` is told of each
/// submenu made.
void fillMenu(QMenu& menu, const Items& items, const OnNewSubmenu& onNewSubmenu) {
  const std::vector<ItemKey> keys = itemKeys(*items);
  ShownActions shown(menu);
  for (std::size_t i = 0; i < items->size(); ++i) {
    ItemAction* action = shown.take(keys[i]);
    const bool isNew = action == nullptr;
    if (isNew) action = new ItemAction(keys[i], &menu);
    action->setItem({items, &(*items)[i]});
    fillSubmenu(*action, onNewSubmenu);
    if (isNew) menu.insertAction(shown.following(), action);
  }
  // Last: a visible menu that is empty for a moment closes.
  for (QAction* action : shown.obsolete()) {
    menu.removeAction(action);
    action->deleteLater();
  }
}

void refreshLiveTitles(const QMenu& menu) {
  for (QAction* action : menu.actions()) {
    auto* const one = static_cast<ItemAction*>(action);
    if (one->item()->live) one->refreshTitle();
    if (one->menu() != nullptr) refreshLiveTitles(*one->menu());
  }
}

}  // namespace

PopupMenu::PopupMenu(QWidget* parent, bool isReadOut) : ScrollingMenu(parent) {
  style_.letKeysReachAll(isReadOut);
  setWindowTitle("Vorda menu");
  setAccessibleName(windowTitle());
  mind(*this);
}

void PopupMenu::mind(QMenu& menu) {
  style_.dress(menu);
  scrolling_.watch(menu);
  connect(&menu, &QMenu::triggered, this, [this, &menu](QAction* action) {
    // A menu also emits the signals of its submenus; ignore those.
    if (!menu.actions().contains(action)) return;
    Q_EMIT chosen(static_cast<ItemAction*>(action)->item());
  });
  toolTips_.watch(menu);
  letMenuOpenUnasked(menu);
}

void PopupMenu::setMenu(const std::shared_ptr<const Menu>& menu) {
  const QAction* pointedAt = activeAction();
  const QPoint before = pointedAt != nullptr ? actionGeometry(activeAction()).topLeft() : QPoint();
  fillMenu(*this, {menu, &menu->items}, [this](QMenu& submenu, ItemAction& action) {
    mind(submenu);
    connect(&submenu, &QMenu::aboutToShow, this,
            [this, &action] { Q_EMIT submenuOpening(action.item()); });
  });
  if (!isVisible()) return;
  // The menu grew or shrank above the item under the pointer: move the menu so that the item stays
  // there.
  if (pointedAt != nullptr && activeAction() == pointedAt) {
    move(pos() + before - actionGeometry(activeAction()).topLeft());
  }
  // Qt gives it its full height.
  if (!screen()->availableGeometry().contains(geometry())) fitScreen(*this);
}

void PopupMenu::openAt(QPoint place) {
  const QScreen* at = QGuiApplication::screenAt(place);
  if (at == nullptr) return popup(place);
  // On Plasma Qt lets menus cover panels.
  setMaximumHeight(roomForMenu(*at));
  const QRect free = at->availableGeometry();
  popup(free.contains(place) ? place : cornerWithin(place, sizeHint(), free));
  if (!free.contains(geometry())) move(cornerWithin(pos(), size(), free));
}

void PopupMenu::refreshStrip() {
  for (QAction* action : actions()) static_cast<ItemAction*>(action)->refreshStrip();
}

void PopupMenu::refreshTitles() {
  const QRect before = geometry();
  refreshLiveTitles(*this);
  // Qt gives it its full height when a title has changed. It must not be opened anew: a submenu may
  // be open.
  if (isVisible() && !screen()->availableGeometry().contains(geometry())) setGeometry(before);
}

/// "Refresh now" leaves the menu open, to show what it has found.
bool PopupMenu::chooseWithoutClosing(QAction* action) {
  const auto* pointedAt = static_cast<ItemAction*>(action);
  if (pointedAt == nullptr || pointedAt->item()->action != Action::refreshNow) return false;
  Q_EMIT chosen(pointedAt->item());
  return true;
}

void PopupMenu::mouseReleaseEvent(QMouseEvent* event) {
  if (!chooseWithoutClosing(actionAt(event->position().toPoint()))) {
    QMenu::mouseReleaseEvent(event);
  }
}

void PopupMenu::keyPressEvent(QKeyEvent* event) {
  const bool chooses = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter ||
                       event->key() == Qt::Key_Space;
  if (chooses && chooseWithoutClosing(activeAction())) return;
  if (event->key() == Qt::Key_Comma && event->modifiers() == Qt::ControlModifier) {
    close();
    Q_EMIT settingsRequested();
    return;
  }
  QMenu::keyPressEvent(event);
}
