#include "frontends/qt/x11/x11_display.h"

#include <QGuiApplication>
#include <cstdint>

namespace X11Display {

xcb_connection_t* connection() {
  const auto* application = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
  return application == nullptr ? nullptr : application->connection();
}

int screenNumber() {
  char* host = nullptr;
  int display = 0;
  int screen = 0;
  if (xcb_parse_display(nullptr, &host, &display, &screen) == 0) return 0;
  std::free(host);
  return screen;
}

xcb_atom_t atom(const std::string& name) {
  const auto length = static_cast<std::uint16_t>(name.size());
  const auto request = xcb_intern_atom(connection(), 0, length, name.c_str());
  const XcbReply<xcb_intern_atom_reply_t> reply(
      xcb_intern_atom_reply(connection(), request, nullptr));
  return reply == nullptr ? static_cast<xcb_atom_t>(XCB_ATOM_NONE) : reply->atom;
}

}  // namespace X11Display
