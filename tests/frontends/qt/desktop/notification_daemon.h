#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "platform/linux/sd_bus_ptr.h"

/// A desktop's notifications, in the hands of a test, on the bus of that address.
class NotificationDaemon {
 public:
  /// One call of "Notify".
  struct Shown {
    std::string program;
    std::uint32_t replaces = 0;
    std::string summary;
    std::string body;
    std::vector<std::string> actions;
    int urgency = -1;
    std::string desktopEntry;
  };

  explicit NotificationDaemon(const std::string& busAddress);
  NotificationDaemon(const NotificationDaemon&) = delete;
  NotificationDaemon& operator=(const NotificationDaemon&) = delete;

  /// Answers what has come in, and does not wait.
  void process();

  /// In order; their ids are 101, 102 and so on, or that of the one that is replaced.
  const std::vector<Shown>& shown() const { return shown_; }
  /// Whether it shows nothing more, and how often that has happened.
  void setRefuses(bool refuses) { refuses_ = refuses; }
  int refusals() const { return refusals_; }

  void act(std::uint32_t id, const char* action);
  void giveToken(std::uint32_t id, const char* token);
  void close(std::uint32_t id);

 private:
  friend struct NotificationVtable;

  BusPtr bus_;
  BusSlot object_;
  std::vector<Shown> shown_;
  bool refuses_ = false;
  int refusals_ = 0;
};
