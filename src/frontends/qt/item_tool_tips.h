#pragma once

#include <QObject>
#include <QPointer>
#include <QTimer>

class QAction;
class QMenu;

/// Shows a menu item's tooltip, which is its action's data, when the item has been pointed at for a
/// while. QMenu's own tooltips leave out items that have a submenu.
class ItemToolTips : public QObject {
  Q_OBJECT

 public:
  static constexpr int kDelay = 700;  // milliseconds

  ItemToolTips();

  /// Shows tooltips for the items of this menu from now on.
  void watch(QMenu& menu);

 private:
  void show();

  QTimer timer_;
  QPointer<QMenu> menu_;
  QPointer<QAction> action_;
};
