#pragma once

#include <QMenu>
#include <QObject>

/// The menu that this one is a submenu of; nullptr for none.
QMenu* parentMenu(const QMenu& menu);

/// Opens an open menu anew where it stands, as high as the screen allows, without anybody hearing
/// of it.
void fitScreen(QMenu& menu);

/// A menu that scrolls where it is higher than it may be (`maximumHeight`): Qt's own scrolls only
/// where it is higher than the screen.
class ScrollingMenu : public QMenu {
  Q_OBJECT

 public:
  using QMenu::QMenu;
  QSize sizeHint() const override;
};

/// What a menu that may be higher than the screen does differently from Qt's own: it scrolls only
/// with the pointer inside, keeps the row that keys have chosen in sight, and fits the screen again
/// when that changes its size.
class MenuScrolling : public QObject {
  Q_OBJECT

 public:
  /// Minds this menu from now on.
  void watch(QMenu& menu);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void followScreen(QMenu& menu);

  QMetaObject::Connection screen_;
};
