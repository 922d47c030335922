#include "frontends/qt/popup_menu.h"

#include <QKeyEvent>
#include <QMouseEvent>

#include "frontends/qt/item_action.h"
#include "frontends/qt/menu_filling.h"
#include "frontends/qt/wayland/menu_surface.h"

PopupMenu::PopupMenu(QWidget* parent) : QMenu(parent) {
  setWindowTitle("Vorda menu");
  setAccessibleName(windowTitle());
  mind(*this);
}

void PopupMenu::mind(QMenu& menu) {
  style_.dress(menu);
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
  fillMenu(*this, {menu, &menu->items}, [this](QMenu& submenu) { mind(submenu); });
  if (!isVisible()) return;
  // The menu grew or shrank above the item under the pointer: move the menu so that the item stays
  // there.
  if (pointedAt != nullptr && activeAction() == pointedAt) {
    move(pos() + before - actionGeometry(activeAction()).topLeft());
  }
}

void PopupMenu::refreshStrip() {
  for (QAction* action : actions()) static_cast<ItemAction*>(action)->refreshStrip();
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
