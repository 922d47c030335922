#include "frontends/qt/menu_scrolling.h"

#include <QApplication>
#include <QMouseEvent>
#include <QPointer>
#include <QScreen>
#include <QStyle>
#include <QTimer>
#include <algorithm>

#include "frontends/qt/screen_place.h"
#include "frontends/qt/wayland/menu_surface.h"

namespace {

bool isScrollable(const QMenu& menu) {
  if (menu.isEmpty()) return false;
  return menu.actionGeometry(menu.actions().front()).top() < 0 ||
         menu.actionGeometry(menu.actions().back()).bottom() >= menu.height();
}

/// The menus that this one opened from have a claim to the pointer as well.
bool isOverParent(const QMenu& menu, QPoint global) {
  for (const QMenu* parent = parentMenu(menu); parent != nullptr; parent = parentMenu(*parent)) {
    if (parent->isVisible() && parent->geometry().contains(global)) return true;
  }
  return false;
}

/// To Qt a pointer above or below the menu is on one of the arrows that scroll it; one beside it is
/// not.
void sendFromBeside(QMenu& menu, const QMouseEvent& event) {
  const QPointF aside(-1 - event.position().x(), 0);
  QMouseEvent beside(event.type(), event.position() + aside, event.globalPosition() + aside,
                     event.button(), event.buttons(), event.modifiers(), event.pointingDevice());
  QCoreApplication::sendEvent(&menu, &beside);
}

void bringIntoSight(QMenu& menu) {
  QAction* active = menu.activeAction();
  if (active == nullptr || !isScrollable(menu)) return;
  const int arrow = menu.style()->pixelMetric(QStyle::PM_MenuScrollerHeight, nullptr, &menu);
  const QRect row = menu.actionGeometry(active);
  const bool isFirst = active == menu.actions().front();
  const bool isLast = active == menu.actions().back();
  if (row.top() < (isFirst ? 0 : arrow) || row.bottom() >= menu.height() - (isLast ? 0 : arrow)) {
    menu.setActiveAction(active);  // scrolls it to the middle
  }
}

}  // namespace

QMenu* parentMenu(const QMenu& menu) {
  auto* parent = qobject_cast<QMenu*>(menu.menuAction()->parent());
  return parent == &menu ? nullptr : parent;
}

QSize ScrollingMenu::sizeHint() const {
  const QSize whole = QMenu::sizeHint();
  if (whole.height() <= maximumHeight()) return whole;
  return {whole.width(), std::max(whole.height(), screen()->geometry().height() + 1)};
}

void fitScreen(QMenu& menu) {
  menu.setMaximumHeight(roomForMenu(*menu.screen()));
  const QPoint corner =
      cornerWithin(menu.pos(), menu.sizeHint(), menu.screen()->availableGeometry());
  const QPointer<QAction> active = menu.activeAction();
  {
    const QSignalBlocker silence(menu);
    menu.hide();
    menu.popup(corner);
  }
  if (active) menu.setActiveAction(active);
}

void MenuScrolling::watch(QMenu& menu) {
  menu.installEventFilter(this);
}

bool MenuScrolling::eventFilter(QObject* watched, QEvent* event) {
  auto* const watchedMenu = qobject_cast<QMenu*>(watched);
  if (watchedMenu == nullptr) return false;  // a menu that is being destroyed is none any more
  QMenu& menu = *watchedMenu;
  switch (event->type()) {
    case QEvent::MouseMove:
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease: {
      const auto& mouse = static_cast<const QMouseEvent&>(*event);
      const QPoint place = mouse.position().toPoint();
      const bool isAside = place.x() < 0 || place.x() >= menu.width();
      if (isAside || menu.rect().contains(place) || !isScrollable(menu)) return false;
      if (isOverParent(menu, mouse.globalPosition().toPoint())) return false;
      sendFromBeside(menu, mouse);
      return true;
    }
    case QEvent::KeyPress: {
      // After the menu has seen the key.
      QTimer::singleShot(0, &menu, [&menu] {
        if (menu.isVisible()) bringIntoSight(menu);
      });
      return false;
    }
    case QEvent::Show:
      if (parentMenu(menu) == nullptr) followScreen(menu);
      return false;
    default:
      return false;
  }
}

void MenuScrolling::followScreen(QMenu& menu) {
  disconnect(screen_);
  // Later, when the windows have been told, too.
  screen_ = connect(
      menu.screen(), &QScreen::availableGeometryChanged, &menu,
      [&menu] {
        if (menu.isVisible()) fitScreen(menu);
      },
      Qt::QueuedConnection);
}
