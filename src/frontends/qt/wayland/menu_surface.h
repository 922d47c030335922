#pragma once

#include <QtGlobal>

class QByteArray;
class QMenu;
class QScreen;

[[nodiscard]] bool isOnWayland();

/// How many points high a screen is. GNOME's compositor tells its height in pixels on Wayland;
/// where it allows fractions of a scale it doesn't, and the screen is taken for less high than it
/// is.
[[nodiscard]] int linesOf(const QScreen& screen);
/// The same of a height that was told on Wayland, with so many pixels a point, where
/// XDG_CURRENT_DESKTOP has that value.
[[nodiscard]] int linesOf(int told, qreal scale, const QByteArray& desktops);

/// How high a menu may be on this screen without covering panels.
[[nodiscard]] int roomForMenu(const QScreen& screen, bool onWayland = isOnWayland());

/// On Wayland a menu may pop up, and grab the pointer, only in answer to a click into a window of
/// the same program. A click on a tray icon is no such click, and Qt would show the menu as an
/// ordinary window. This makes `menu`, each time it opens, a surface like a tooltip's: attached to
/// its parent, without a grab, and low enough to leave a panel free: it scrolls where it is higher.
/// Without effect elsewhere.
void letMenuOpenUnasked(QMenu& menu, bool onWayland = isOnWayland());
