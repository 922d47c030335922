#pragma once

#include <QAccessible>
#include <memory>

#include "frontends/qt/item_tool_tips.h"
#include "frontends/qt/menu_scrolling.h"
#include "frontends/qt/menu_style.h"
#include "ui/menu.h"

/// The menu as the program itself shows it: the live strip on top, dots, submenus, tooltips.
class PopupMenu : public ScrollingMenu {
  Q_OBJECT

 public:
  /// Screen readers read where the keys are: where there is one, keys reach strip, summary and
  /// headings as well.
  explicit PopupMenu(QWidget* parent = nullptr, bool isReadOut = QAccessible::isActive());

  /// Shows these items. An open menu stays open, and its "Refresh now" under the pointer.
  void setMenu(const std::shared_ptr<const Menu>& menu);

  /// Opens it at that place on the screen, or beside the panel that covers it.
  void openAt(QPoint place);

  /// The strip has changed: draws it anew.
  void refreshStrip();
  /// Live titles have changed: shows them.
  void refreshTitles();

 Q_SIGNALS:
  void chosen(std::shared_ptr<const MenuItem> item);
  void submenuOpening(std::shared_ptr<const MenuItem> row);
  void settingsRequested();

 protected:
  void mouseReleaseEvent(QMouseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  void mind(QMenu& menu);
  bool chooseWithoutClosing(QAction* action);

  MenuStyle style_;
  ItemToolTips toolTips_;
  MenuScrolling scrolling_;
};
