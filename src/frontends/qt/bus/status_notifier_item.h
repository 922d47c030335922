#pragma once

#include <QImage>
#include <QObject>
#include <string>
#include <vector>

#include "platform/linux/sd_bus_ptr.h"

/// The icon as tray hosts ask for it: an org.kde.StatusNotifierItem, served as long as the object
/// lives.
class StatusNotifierItem : public QObject {
  Q_OBJECT

 public:
  static constexpr const char* kPath = "/StatusNotifierItem";

  /// `pictures` is the icon in several sizes; `menuPath` where the menu is served.
  StatusNotifierItem(sd_bus* bus, std::vector<QImage> pictures, std::string menuPath);

  /// The icon's name, which screen readers say. Hosts show it only where there is no tooltip.
  void setTitle(const std::string& title);
  void setToolTip(const std::string& toolTip);

  /// While quiet, the icon has no tooltip. Some hosts would leave it standing over the menu that a
  /// click on the icon has opened.
  void setQuiet(bool quiet);

 Q_SIGNALS:
  /// The user clicked the icon, or asked for a menu that the host does not show itself.
  void activated();

 private:
  friend struct StatusNotifierItemVtable;

  sd_bus* bus_;
  std::vector<QImage> pictures_;
  std::string menuPath_;
  std::string title_;
  std::string toolTip_;
  bool quiet_ = false;
  BusSlot object_;
};
