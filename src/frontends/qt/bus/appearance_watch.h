#pragma once

#include <QObject>
#include <cstddef>

#include "frontends/qt/appearance.h"
#include "platform/linux/sd_bus_ptr.h"

/// Watches how the user has asked the desktop for programs to look, through its portal
/// (org.freedesktop.portal.Settings), which the bus starts where there is one.
class AppearanceWatch : public QObject {
  Q_OBJECT

 public:
  /// Asks at once. The bus must have accepted the connection.
  explicit AppearanceWatch(sd_bus* bus);

  /// Neither preference nor high contrast where there is no portal, or it has not answered yet.
  const Appearance& appearance() const { return appearance_; }

 Q_SIGNALS:
  void changed();

 private:
  void watch(BusSlot& slot, const char* group);
  void askFromStart();
  void ask();
  void settle();
  static int answered(sd_bus_message* reply, void* self, sd_bus_error*);
  static int settingChanged(sd_bus_message* signal, void* self, sd_bus_error*);

  sd_bus* bus_;
  Appearance appearance_;
  Appearance heard_;       // so far, from the questions that are under way
  std::size_t next_ = 0;   // the question that is to be answered next
  bool askAgain_ = false;  // once the questions are answered
  BusSlot appearanceMatch_;
  BusSlot accessibilityMatch_;
  BusSlot question_;
};
