#pragma once

#include <QByteArray>
#include <QObject>
#include <cstdint>
#include <string>

#include "platform/linux/sd_bus_ptr.h"

/// What the program says through the desktop's notifications (org.freedesktop.Notifications), which
/// the bus starts where there are any. Nobody waits for an answer. Urgency is the usual one, so
/// that a desktop's "do not disturb" holds.
class Notifications : public QObject {
  Q_OBJECT

 public:
  /// The bus must have accepted the connection.
  explicit Notifications(sd_bus* bus);

  /// Shows plain text, in place of what was shown before and is still there.
  void show(const std::string& summary, const std::string& text);

 Q_SIGNALS:
  /// The user clicked what was shown last.
  void chosen();
  /// What the next window shows the compositor to be given the keyboard (xdg-activation). Comes
  /// before chosen(), where the desktop has such a thing.
  void tokenProvided(QByteArray token);

 private:
  static int answered(sd_bus_message* reply, void* self, sd_bus_error*);
  static int acted(sd_bus_message* signal, void* self, sd_bus_error*);
  static int tokenGiven(sd_bus_message* signal, void* self, sd_bus_error*);
  static int closed(sd_bus_message* signal, void* self, sd_bus_error*);
  bool isAboutShown(sd_bus_message* signal, std::uint32_t id) const;

  sd_bus* bus_;
  std::string server_;       ///< the unique name of who answered last
  std::uint32_t shown_ = 0;  ///< what it called the notification; 0 for none
  bool isThere_ = false;     ///< it has not been closed
  BusSlot tokenMatch_;
  BusSlot actionMatch_;
  BusSlot closingMatch_;
  BusSlot call_;  ///< that has not been answered yet
};

/// Text as the body of a notification, which is markup.
std::string asMarkup(const std::string& text);
