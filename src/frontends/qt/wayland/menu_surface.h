#pragma once

class QMenu;
class QScreen;

[[nodiscard]] bool isOnWayland();

/// How high a menu may be on this screen without covering panels.
[[nodiscard]] int roomForMenu(const QScreen& screen, bool onWayland = isOnWayland());

/// On Wayland a menu may pop up, and grab the pointer, only in answer to a click into a window of
/// the same program. A click on a tray icon is no such click, and Qt would show the menu as an
/// ordinary window. This makes `menu`, each time it opens, a surface like a tooltip's: attached to
/// its parent, without a grab, and low enough to leave a panel free: it scrolls where it is higher.
/// Without effect elsewhere.
void letMenuOpenUnasked(QMenu& menu, bool onWayland = isOnWayland());
