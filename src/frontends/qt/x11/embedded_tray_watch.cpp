#include "frontends/qt/x11/embedded_tray_watch.h"

#include <QGuiApplication>
#include <cstdint>
#include <string>

#include "frontends/qt/x11/x11_display.h"

EmbeddedTrayWatch::EmbeddedTrayWatch() {
  if (X11Display::connection() == nullptr) return;
  selection_ = X11Display::atom("_NET_SYSTEM_TRAY_S" + std::to_string(X11Display::screenNumber()));
  manager_ = X11Display::atom("MANAGER");
  owner_ = watchOwner();
  qGuiApp->installNativeEventFilter(this);
}

EmbeddedTrayWatch::~EmbeddedTrayWatch() {
  if (qGuiApp != nullptr) qGuiApp->removeNativeEventFilter(this);
}

xcb_window_t EmbeddedTrayWatch::owner() const {
  xcb_connection_t* connection = X11Display::connection();
  const auto request = xcb_get_selection_owner(connection, selection_);
  const XcbReply<xcb_get_selection_owner_reply_t> reply(
      xcb_get_selection_owner_reply(connection, request, nullptr));
  return reply == nullptr ? xcb_window_t{XCB_WINDOW_NONE} : reply->owner;
}

/// The tray's window, after asking the server to report its end. A window that ended before we
/// asked would never be reported, so this repeats until the owner is the same before and after.
xcb_window_t EmbeddedTrayWatch::watchOwner() const {
  const std::uint32_t events = XCB_EVENT_MASK_STRUCTURE_NOTIFY;
  xcb_window_t watched = owner();
  while (watched != XCB_WINDOW_NONE) {
    xcb_change_window_attributes(X11Display::connection(), watched, XCB_CW_EVENT_MASK, &events);
    const xcb_window_t now = owner();
    if (now == watched) break;
    watched = now;
  }
  return watched;
}

void EmbeddedTrayWatch::update(xcb_window_t owner) {
  if (owner == owner_) return;
  owner_ = owner;
  Q_EMIT changed();
}

/// A new tray announces itself to every client by a MANAGER message, which Qt's connection
/// receives.
bool EmbeddedTrayWatch::nativeEventFilter(const QByteArray&, void* message, qintptr*) {
  constexpr std::uint8_t kSentBySomebody = 0x80;
  const auto* event = static_cast<const xcb_generic_event_t*>(message);
  switch (event->response_type & ~kSentBySomebody) {
    case XCB_CLIENT_MESSAGE: {
      const auto* said = static_cast<const xcb_client_message_event_t*>(message);
      if (said->type == manager_ && said->data.data32[1] == selection_) update(watchOwner());
      break;
    }
    case XCB_DESTROY_NOTIFY: {
      const auto* gone = static_cast<const xcb_destroy_notify_event_t*>(message);
      if (gone->window == owner_ && owner_ != XCB_WINDOW_NONE) update(watchOwner());
      break;
    }
    default:
      break;
  }
  return false;
}
