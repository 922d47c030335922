#pragma once

#include <QObject>
#include <string>

#include "frontends/qt/bus/sd_bus_ptr.h"

/// Watches for somebody who shows tray icons: the StatusNotifierWatcher, as long as it says
/// that a host is registered with it. Registers our icon with it, and again with every new
/// watcher.
class TrayHostWatch : public QObject {
  Q_OBJECT

 public:
  /// `serviceName` is the bus name on which the icon is served.
  TrayHostWatch(sd_bus* bus, std::string serviceName);

  /// Whether a host is there and has been told of the icon.
  bool hostShowsIcon() const { return hostShowsIcon_; }
  /// Whether the watcher has been heard, or there is none: before, nothing is known.
  bool decided() const { return decided_; }

 Q_SIGNALS:
  void changed();

 private:
  void addMatch(BusSlot& slot, const std::string& rule, sd_bus_message_handler_t handler);
  void askForHost();
  void registerIcon();
  void settle(bool shown);

  static int watcherChanged(sd_bus_message* message, void* self, sd_bus_error*);
  static int hostsChanged(sd_bus_message* message, void* self, sd_bus_error*);
  static int hostAnswered(sd_bus_message* reply, void* self, sd_bus_error*);
  static int iconRegistered(sd_bus_message* reply, void* self, sd_bus_error*);

  sd_bus* bus_;
  std::string serviceName_;
  bool hostShowsIcon_ = false;
  bool decided_ = false;
  bool registered_ = false;  // with the present watcher
  BusSlot watcherMatch_;
  BusSlot hostsMatch_;
  BusSlot question_;
};
