#include "frontends/qt/wayland/menu_surface.h"

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

int roomForMenu(const QScreen& screen, bool onWayland) {
  return onWayland ? screen.geometry().height() - kPanel : screen.availableGeometry().height();
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
