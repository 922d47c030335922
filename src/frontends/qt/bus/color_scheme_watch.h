#pragma once

#include <QObject>

#include "frontends/qt/color_scheme.h"
#include "platform/linux/sd_bus_ptr.h"

/// Watches which colours the user has asked the desktop for, through its portal
/// (org.freedesktop.portal.Settings), which the bus starts where there is one.
class ColorSchemeWatch : public QObject {
  Q_OBJECT

 public:
  /// Asks at once. The bus must have accepted the connection.
  explicit ColorSchemeWatch(sd_bus* bus);

  /// noPreference where there is no portal, or it has not answered yet.
  ColorScheme scheme() const { return scheme_; }

 Q_SIGNALS:
  void changed();

 private:
  void ask();
  static int answered(sd_bus_message* reply, void* self, sd_bus_error*);
  static int settingChanged(sd_bus_message* signal, void* self, sd_bus_error*);

  sd_bus* bus_;
  ColorScheme scheme_ = ColorScheme::noPreference;
  bool askAgain_ = false;  // once the question is answered
  BusSlot match_;
  BusSlot question_;
};
