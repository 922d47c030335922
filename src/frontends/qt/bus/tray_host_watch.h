#pragma once

#include <QElapsedTimer>
#include <QObject>
#include <QTimer>
#include <string>

#include "frontends/qt/tray_host_kind.h"
#include "platform/linux/sd_bus_ptr.h"

/// What a TrayHostWatch waits for, in milliseconds.
struct TrayHostTimes {
  int betweenLooks = 100;
  int patience = 3000;       ///< how long the icon may be missing from the list
  int firstPause = 250;      ///< before an icon that was dropped is registered again
  int longestPause = 30000;  ///< the pause doubles up to this
};

/// Watches for a host that shows tray icons: there is one while a StatusNotifierWatcher says that
/// a host is registered with it, and some host has a bus name, where hosts have names: Plasma's
/// watcher is no part of its panel, and never says that the panel has died, or is not there yet.
/// Registers our icon with it, again with every new watcher, and again whenever the watcher has
/// dropped it from its list.
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
  enum class Missing { no, forAMoment, forTooLong };
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
  void registerAgainLater();
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
  bool registered_ = false;  // with the present watcher
  bool listed_ = false;      // by the watcher, when it was asked last
  Missing missing_ = Missing::no;
  int pause_;

  BusSlot watcherMatch_;
  BusSlot hostMatch_;
  BusSlot signalMatch_;
  BusSlot question_;        // the call that has not been answered yet
  bool lookAgain_ = false;  // once the question is answered
  QElapsedTimer sinceLook_;
  QElapsedTimer sinceListed_;
  QTimer nextLook_;
  QTimer patience_;
  QTimer again_;
};
