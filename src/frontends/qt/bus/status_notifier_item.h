#pragma once

#include <QByteArray>
#include <QImage>
#include <QObject>
#include <QPoint>
#include <string>
#include <vector>

#include "platform/linux/sd_bus_ptr.h"

/// The icon as tray hosts ask for it: an org.kde.StatusNotifierItem, served as long as the object
/// lives.
class StatusNotifierItem : public QObject {
  Q_OBJECT

 public:
  static constexpr const char* kPath = "/StatusNotifierItem";

  /// The icon in several sizes.
  struct Pictures {
    std::vector<QImage> usual;
    std::vector<QImage> attention;  ///< while it asks for attention
  };

  /// `menuPath` is where the menu is served.
  StatusNotifierItem(sd_bus* bus, Pictures pictures, std::string menuPath);

  /// The icon's name, which screen readers say. Hosts show it only where there is no tooltip.
  void setTitle(const std::string& title);
  void setToolTip(const std::string& toolTip);

  /// While quiet, the icon has no tooltip. Some hosts would leave it standing over the menu that a
  /// click on the icon has opened.
  void setQuiet(bool quiet);

  /// Whether the icon asks for attention; hosts then show it where they hide others.
  void setNeedsAttention(bool needsAttention);

 Q_SIGNALS:
  /// The user clicked the icon, or asked for a menu that the host does not show itself.
  /// `icon` is where it is on the screen, as far as the host knows: null where it does not.
  void activated(QPoint icon);
  /// What the next window shows the compositor to be given the keyboard (xdg-activation): proof
  /// that the user has clicked here.
  void tokenProvided(QByteArray token);

 private:
  friend struct StatusNotifierItemVtable;

  const char* status() const { return needsAttention_ ? "NeedsAttention" : "Active"; }

  sd_bus* bus_;
  Pictures pictures_;
  std::string menuPath_;
  std::string title_;
  std::string toolTip_;
  bool quiet_ = false;
  bool needsAttention_ = false;
  BusSlot object_;
};
