#pragma once

#include <QElapsedTimer>
#include <QObject>
#include <QTimer>
#include <string>

#include "frontends/qt/bus/tray_registration.h"
#include "frontends/qt/tray_host_kind.h"
#include "platform/linux/sd_bus_ptr.h"

/// Watches for a host that shows tray icons: there is one while a StatusNotifierWatcher says that
/// a host is registered with it, and some host has a bus name, where hosts have names: Plasma's
/// watcher is no part of its panel, and never says that the panel has died, or is not there yet.
/// Registers our icon with it, again with every new watcher, and again (when TrayRegistration says
/// so) after the watcher has dropped it from its list.
///
/// Signals count only if they come from the bus itself or from the watcher. However many come, the
/// watcher is asked at most once in TrayHostTimes::betweenLooks.
class TrayHostWatch : public QObject {
  Q_OBJECT

 public:
  /// The icon is served on this bus, which must have accepted the connection.
  explicit TrayHostWatch(sd_bus* bus, const TrayHostTimes& times = {});

  /// Whether there is a host that the icon is registered with, and that has not been without it
  /// for longer than TrayHostTimes::patience.
  bool hostShowsIcon() const { return hostShowsIcon_; }
  /// Whether it is known yet if there is a watcher, and what it says.
  bool decided() const { return decided_; }
  /// Known before the icon is registered.
  TrayHostKind hostKind() const { return hostKind_; }

 Q_SIGNALS:
  void changed();
  /// The watcher has changed or gone: whatever menu the old one's host had open is gone. Emitted
  /// at once, even where changed() is not, because the next watcher comes so soon.
  void watcherChanged();

 private:
  using Handler = int (*)(sd_bus_message* reply, void* self, sd_bus_error*);

  void addMatch(BusSlot& slot, const std::string& rule, Handler handler);
  void forgetIcon();
  void lookSoon();
  void look();
  void ask(const char* property, Handler handler);
  void askForHosts();
  void seeToIcon();
  void hostIsGone();
  void askForOwner(const char* name, Handler handler);
  bool isWatcher(sd_bus_message* reply) const;
  void registerIcon();
  void iconIsListed();
  void iconIsMissing();
  void sent(int result, sd_bus_slot* question);
  void finishLook();
  void settle(bool shown);

  static int ownerChanged(sd_bus_message* message, void* self, sd_bus_error*);
  static int watcherSignalled(sd_bus_message* message, void* self, sd_bus_error*);
  static int hostNameChanged(sd_bus_message* message, void* self, sd_bus_error*);
  static int hostAnswered(sd_bus_message* reply, void* self, sd_bus_error*);
  static int namesAnswered(sd_bus_message* reply, void* self, sd_bus_error*);
  static int plasmaAnswered(sd_bus_message* reply, void* self, sd_bus_error*);
  static int shellAnswered(sd_bus_message* reply, void* self, sd_bus_error*);
  static int iconRegistered(sd_bus_message* reply, void* self, sd_bus_error*);
  static int itemsAnswered(sd_bus_message* reply, void* self, sd_bus_error*);

  sd_bus* bus_;
  TrayHostTimes times_;
  std::string icon_;     // the unique bus name on which the icon is served
  std::string watcher_;  // the watcher's unique bus name; "" for none or not known yet
  bool watcherIsGone_ = false;
  TrayHostKind hostKind_ = TrayHostKind::usual;
  bool hostsHaveNames_ = false;  // those of the present watcher
  bool hostShowsIcon_ = false;
  bool decided_ = false;

  BusSlot watcherMatch_;
  BusSlot hostMatch_;
  BusSlot signalMatch_;
  BusSlot question_;        // the call that has not been answered yet
  bool lookAgain_ = false;  // once the question is answered
  QElapsedTimer sinceLook_;
  QTimer nextLook_;
  TrayRegistration registration_;
};
