#include "frontends/qt/wayland/menu_surface.h"

#include <QByteArray>
#include <QGuiApplication>
#include <QMenu>
#include <QScreen>
#include <QWindow>

namespace {

/// A panel's height. Wayland doesn't tell what of the screen panels cover.
constexpr int kPanel = 64;

}  // namespace

bool isOnWayland() {
  return QGuiApplication::platformName().startsWith("wayland");
}

int linesOf(int told, qreal scale, const QByteArray& desktops) {
  return desktops.split(':').contains("GNOME") ? qRound(told / scale) : told;
}

int linesOf(const QScreen& screen) {
  const int told = screen.geometry().height();
  if (!isOnWayland()) return told;
  return linesOf(told, screen.devicePixelRatio(), qgetenv("XDG_CURRENT_DESKTOP"));
}

int roomForMenu(const QScreen& screen, bool onWayland) {
  return onWayland ? linesOf(screen) - kPanel : screen.availableGeometry().height();
}

void letMenuOpenUnasked(QMenu& menu, bool onWayland) {
  if (!onWayland) return;
  QObject::connect(&menu, &QMenu::aboutToShow, &menu, [&menu] {
    menu.setMaximumHeight(roomForMenu(*menu.screen(), true));
    menu.winId();  // creates the window, whose kind is read when it is shown
    QWindow* window = menu.windowHandle();
    window->setFlags((window->flags() & ~Qt::WindowType_Mask) | Qt::ToolTip);
  });
}
