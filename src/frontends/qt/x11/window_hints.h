#pragma once

class QWidget;

/// Asks the window manager to leave a window that has not been shown yet out of its task bar and
/// pager. Without effect on Wayland, which has no such request.
void keepOffTaskbar(QWidget& window);

/// Asks the window manager to show the window on every virtual desktop, as it does with a tray. To
/// be called before the window is shown.
void keepOnAllDesktops(QWidget& window);
