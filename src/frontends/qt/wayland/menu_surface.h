#pragma once

#include <QSize>
#include <QtGlobal>
#include <vector>

class QMenu;
class QScreen;

[[nodiscard]] bool isOnWayland();

/// How a compositor drives a screen.
struct OutputMode {
  QSize pixels;   // as it stands: turned by a quarter, height and width are exchanged
  int scale = 1;  // pixels a point, rounded up
};

/// Those of all screens, on Wayland; empty elsewhere, and where the program was built without what
/// it takes to ask.
[[nodiscard]] std::vector<OutputMode> outputModes();

/// How many points high a screen is. On Wayland GNOME's compositor tells it in pixels, unless it
/// allows fractions of a scale.
[[nodiscard]] int linesOf(const QScreen& screen);
/// The same of a screen that was told to be of that size, with so many pixels a point, by a
/// compositor that drives its screens so.
[[nodiscard]] int linesOf(QSize told, qreal scale, const std::vector<OutputMode>& modes);

/// How high a menu may be on this screen without covering panels.
[[nodiscard]] int roomForMenu(const QScreen& screen, bool onWayland = isOnWayland());

/// On Wayland a menu may pop up, and grab the pointer, only in answer to a click into a window of
/// the same program. A click on a tray icon is no such click, and Qt would show the menu as an
/// ordinary window. This makes `menu`, each time it opens, a surface like a tooltip's: attached to
/// its parent, without a grab, and low enough to leave a panel free: it scrolls where it is higher.
/// Without effect elsewhere.
void letMenuOpenUnasked(QMenu& menu, bool onWayland = isOnWayland());
