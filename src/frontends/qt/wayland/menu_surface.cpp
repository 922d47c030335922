#include "frontends/qt/wayland/menu_surface.h"

#include <QGuiApplication>
#include <QMenu>
#include <QScreen>
#include <QWindow>
#include <algorithm>
#include <cmath>

namespace {

/// A panel's height. Wayland doesn't tell what of the screen panels cover.
constexpr int kPanel = 64;

}  // namespace

bool isOnWayland() {
  return QGuiApplication::platformName().startsWith("wayland");
}

int linesOf(QSize told, qreal scale, const std::vector<OutputMode>& modes) {
  const bool isInPixels = scale > 1 && std::ranges::any_of(modes, [&](const OutputMode& mode) {
                            return mode.pixels == told && mode.scale == std::ceil(scale);
                          });
  return isInPixels ? qRound(told.height() / scale) : told.height();
}

int linesOf(const QScreen& screen) {
  const QSize told = screen.geometry().size();
  const qreal scale = screen.devicePixelRatio();
  if (!isOnWayland() || scale <= 1) return told.height();
  return linesOf(told, scale, outputModes());
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
