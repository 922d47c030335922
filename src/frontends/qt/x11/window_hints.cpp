#include "frontends/qt/x11/window_hints.h"

#include <QWidget>
#include <cstdint>

#include "frontends/qt/x11/x11_display.h"

void setInTaskbar(QWidget& window, bool inTaskbar) {
  xcb_connection_t* connection = X11Display::connection();
  if (connection == nullptr) return;
  const xcb_atom_t states[] = {X11Display::atom("_NET_WM_STATE_SKIP_TASKBAR"),
                               X11Display::atom("_NET_WM_STATE_SKIP_PAGER")};
  // Qt adds its own states when it shows the window.
  xcb_change_property(connection, XCB_PROP_MODE_REPLACE, static_cast<xcb_window_t>(window.winId()),
                      X11Display::atom("_NET_WM_STATE"), XCB_ATOM_ATOM, 32, inTaskbar ? 0 : 2,
                      states);
}

void keepOnAllDesktops(QWidget& window) {
  xcb_connection_t* connection = X11Display::connection();
  if (connection == nullptr) return;
  const std::uint32_t all = 0xFFFFFFFF;
  xcb_change_property(connection, XCB_PROP_MODE_REPLACE, static_cast<xcb_window_t>(window.winId()),
                      X11Display::atom("_NET_WM_DESKTOP"), XCB_ATOM_CARDINAL, 32, 1, &all);
}
