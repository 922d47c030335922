#pragma once

class QWidget;

/// Asks the window manager to leave a window out of its task bar and pager, or not to. To be called
/// before the window is shown. Without effect on Wayland, where only Plasma has a protocol for it
/// (wayland/plasma_surface.h).
void setInTaskbar(QWidget& window, bool inTaskbar);

/// Asks the window manager to show the window on every virtual desktop, as it does with a tray. To
/// be called before the window is shown.
void keepOnAllDesktops(QWidget& window);
