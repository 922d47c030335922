#include "frontends/qt/wayland/menu_surface.h"

#include <QGuiApplication>
#include <QMenu>
#include <QWindow>

void letMenuOpenUnasked(QMenu& menu) {
  if (!QGuiApplication::platformName().startsWith("wayland")) return;
  QObject::connect(&menu, &QMenu::aboutToShow, &menu, [&menu] {
    menu.winId();  // creates the window, whose kind is read when it is shown
    QWindow* window = menu.windowHandle();
    window->setFlags((window->flags() & ~Qt::WindowType_Mask) | Qt::ToolTip);
  });
}
