#pragma once

class QWidget;

/// Asks the window manager to leave a window that has not been shown yet out of its task
/// bar and pager. Without effect on Wayland, which has no word for it.
void keepOffTaskbar(QWidget& window);

/// The same for every desktop: it stands on all of them, as a tray does. To be called before
/// the window is shown.
void keepOnAllDesktops(QWidget& window);
