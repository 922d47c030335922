#pragma once

#include <xcb/xcb.h>

#include <QAbstractNativeEventFilter>
#include <QObject>

/// Watches for a tray of the older kind (XEmbed), which embeds X11 windows: the owner of the
/// selection _NET_SYSTEM_TRAY_S<screen number>. On Wayland there never is one.
class EmbeddedTrayWatch : public QObject, public QAbstractNativeEventFilter {
  Q_OBJECT

 public:
  EmbeddedTrayWatch();
  ~EmbeddedTrayWatch() override;

  bool trayIsThere() const { return owner_ != XCB_WINDOW_NONE; }

  bool nativeEventFilter(const QByteArray& eventType, void* message, qintptr* result) override;

 Q_SIGNALS:
  void changed();

 private:
  xcb_window_t owner() const;
  xcb_window_t watchOwner() const;
  void update(xcb_window_t owner);

  xcb_atom_t selection_ = XCB_ATOM_NONE;
  xcb_atom_t manager_ = XCB_ATOM_NONE;
  xcb_window_t owner_ = XCB_WINDOW_NONE;
};
