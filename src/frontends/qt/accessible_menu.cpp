#include "frontends/qt/accessible_menu.h"

#include <QAccessible>
#include <QAccessibleObject>
#include <QApplication>
#include <QMenu>
#include <QPointer>
#include <QWidgetAction>

#include "frontends/qt/menu_scrolling.h"

namespace {

/// The menus that are open; no submenus.
QList<QObject*> openMenus() {
  QList<QObject*> menus;
  for (QWidget* widget : QApplication::topLevelWidgets()) {
    const auto* menu = qobject_cast<QMenu*>(widget);
    if (menu != nullptr && menu->isVisible() && parentMenu(*menu) == nullptr) menus.append(widget);
  }
  return menus;
}

/// What Qt itself puts into the tree, and the open menus behind it. To Qt the application is their
/// parent, whatever window they hang on.
class AccessibleApplication : public QAccessibleApplication {
 public:
  int childCount() const override { return windows() + static_cast<int>(openMenus().size()); }
  QAccessibleInterface* child(int index) const override {
    const int own = windows();
    if (index < own) return QAccessibleApplication::child(index);
    return QAccessible::queryAccessibleInterface(openMenus().value(index - own));
  }
  int indexOfChild(const QAccessibleInterface* child) const override {
    const auto place = openMenus().indexOf(child->object());
    if (place < 0) return QAccessibleApplication::indexOfChild(child);
    return windows() + static_cast<int>(place);
  }

  /// Qt describes it by its path.
  QString text(QAccessible::Text kind) const override {
    return kind == QAccessible::Description ? QString() : QAccessibleApplication::text(kind);
  }

 private:
  int windows() const { return QAccessibleApplication::childCount(); }
};

class AccessibleItem : public QAccessibleInterface, public QAccessibleActionInterface {
 public:
  explicit AccessibleItem(QWidgetAction* action) : action_(action) {}

  bool isValid() const override { return action_ != nullptr && menu() != nullptr; }
  QObject* object() const override { return action_; }
  QWindow* window() const override { return isValid() ? menu()->windowHandle() : nullptr; }

  QAccessibleInterface* parent() const override {
    return QAccessible::queryAccessibleInterface(menu());
  }
  int childCount() const override { return action_->menu() != nullptr ? 1 : 0; }
  QAccessibleInterface* child(int) const override {
    return QAccessible::queryAccessibleInterface(action_->menu());
  }
  int indexOfChild(const QAccessibleInterface* child) const override {
    return child->object() == action_->menu() ? 0 : -1;
  }
  QAccessibleInterface* childAt(int, int) const override { return nullptr; }

  QRect rect() const override {
    if (!menu()->isVisible()) return {};
    return menu()->actionGeometry(action_).translated(menu()->mapToGlobal(QPoint(0, 0)));
  }

  QString text(QAccessible::Text kind) const override {
    if (kind == QAccessible::Name) return action_->property(kSpokenName).toString();
    if (kind == QAccessible::Description) return action_->statusTip();
    return {};
  }
  void setText(QAccessible::Text, const QString&) override {}

  /// Qt's menu finds no children of other kinds.
  QAccessible::Role role() const override {
    return action_->isSeparator() ? QAccessible::Separator : QAccessible::MenuItem;
  }
  QAccessible::State state() const override {
    QAccessible::State state;
    state.focusable = !action_->isSeparator();
    state.focused = menu()->activeAction() == action_;
    state.disabled = !action_->isEnabled();
    state.invisible = !menu()->isVisible();
    state.hasPopup = action_->menu() != nullptr;
    return state;
  }

  void* interface_cast(QAccessible::InterfaceType type) override {
    return type == QAccessible::ActionInterface ? static_cast<QAccessibleActionInterface*>(this)
                                                : nullptr;
  }
  QStringList actionNames() const override {
    if (!action_->isEnabled() || action_->isSeparator()) return {};
    return {action_->menu() != nullptr ? showMenuAction() : pressAction()};
  }
  void doAction(const QString& name) override {
    if (!actionNames().contains(name)) return;
    menu()->setActiveAction(action_);  // opens a submenu
    if (action_->menu() == nullptr) action_->trigger();
  }
  QStringList keyBindingsForAction(const QString&) const override { return {}; }

 private:
  QMenu* menu() const { return action_ ? qobject_cast<QMenu*>(action_->parent()) : nullptr; }

  QPointer<QWidgetAction> action_;
};

QAccessibleInterface* makeInterface(const QString& className, QObject* object) {
  if (className == "QApplication") return new AccessibleApplication;
  // Only those QWidgetActions that are in menus.
  auto* action = qobject_cast<QWidgetAction*>(object);
  if (action != nullptr && qobject_cast<QMenu*>(action->parent()) != nullptr) {
    return new AccessibleItem(action);
  }
  return nullptr;
}

}  // namespace

void makeMenusAccessible() {
  QAccessible::installFactory(&makeInterface);
}
