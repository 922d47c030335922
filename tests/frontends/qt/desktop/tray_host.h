#pragma once

#include <chrono>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "frontends/qt/desktop/connected_bus.h"
#include "frontends/qt/host_item.h"
#include "platform/linux/sd_bus_ptr.h"

/// A tray host of the test's own, with its watcher, on the bus of that address: what a panel
/// is to the program, in the hands of a test.
class TrayHost {
 public:
  explicit TrayHost(const std::string& busAddress);
  TrayHost(const TrayHost&) = delete;
  TrayHost& operator=(const TrayHost&) = delete;

  /// Becomes the bus's tray host; waits in line when there is one.
  void appear();
  void disappear();
  /// A watcher without a host.
  void setHostRegistered(bool registered);
  /// The watcher is part of a program that has this bus name, too, such as GNOME's shell.
  void takeName(const char* name);

  /// What becomes of an icon that is registered.
  enum class List {
    kept,       ///< it is on the list
    empty,      ///< the list never has anything
    forbidden,  ///< there is no list: asking for it is an error
  };
  void setList(List list) { list_ = list; }
  /// Takes the icon off the list, and says so.
  void dropIcon();
  /// Says that often that something has changed, though nothing has.
  void signalNothing(int times);

  /// How often the icon was registered, and how often the host was asked whether it is one.
  int registrations() const { return registrations_; }
  int looks() const { return looks_; }

  /// Answers what comes in, until `done` is true: false when it is not after a minute. Where
  /// nothing comes it looks once in a `moment`.
  bool eventually(const std::function<bool()>& done,
                  std::chrono::microseconds moment = std::chrono::milliseconds(20));
  /// Answers what comes in, for so many seconds.
  void pumpFor(double seconds);

  /// The bus name of the icon that was registered last; "" for none.
  const std::string& icon() const { return icon_; }

  std::string toolTip();
  std::string title();
  std::string status();
  void activate();

  /// The menu, as the program says now; nothing is said of opening it.
  HostItem layout();
  /// The row whose submenu speaks of that process.
  std::optional<HostItem> processRow(int pid);
  void aboutToShow();
  void menuClosed();
  void click(const HostItem& item);

  /// Whether somebody owns that bus name.
  bool isOwned(const std::string& name);
  /// Its unique name.
  std::string owner(const std::string& name);

 private:
  friend struct WatcherVtable;

  BusMessage call(const std::string& destination, const char* path, const char* interface,
                  const char* member, const std::function<void(sd_bus_message*)>& fill = {});
  void event(int id, const char* kind);
  /// The answer to "Get" for that property of the icon.
  BusMessage iconProperty(const char* property);
  std::string iconText(const char* property);

  BusPtr bus_;
  BusSlot watcher_;
  bool hostRegistered_ = true;
  std::string icon_;
  List list_ = List::kept;
  std::vector<std::string> items_;
  int registrations_ = 0;
  int looks_ = 0;
};

/// Sends the owner of `destination` a signal in the name of whoever has that path and interface,
/// from a connection that has nothing to do with it.
void sendForgedSignal(const std::string& busAddress, const std::string& destination,
                      const char* path, const char* interface, const char* member,
                      const std::vector<std::string>& arguments);

/// The item with that label; null for none.
const HostItem* findItem(const HostItem& menu, const std::string& label);
