#pragma once

class QMenu;

/// On Wayland a menu may only pop up, as a surface that takes the pointer, in answer to a
/// click into a window of the same program. A click on a tray icon is none, and Qt would
/// show the menu as a window of its own. This makes `menu`, each time it opens, a surface
/// that hangs on its parent and takes nothing, as a tooltip is. Without effect elsewhere.
void letMenuOpenUnasked(QMenu& menu);
