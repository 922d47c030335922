#pragma once

#include <memory>

#include "frontends/qt/bus/host_menu.h"
#include "frontends/qt/bus/instance_name.h"
#include "frontends/qt/bus/session_bus.h"
#include "frontends/qt/bus/status_notifier_item.h"
#include "frontends/qt/bus/tray_host_watch.h"

/// A bus and the program's name on it.
struct NamedBus {
  std::unique_ptr<SessionBus> bus;
  std::unique_ptr<InstanceName> name;
};

/// All that the program is on the session bus: its name, and the icon and the menu for tray hosts.
/// These are on a connection of their own, which has no other name: GNOME's extension takes an
/// icon that it finds under another name for another icon. When a connection is lost, all is.
struct TrayConnection {
  TrayConnection(NamedBus namedBus, std::unique_ptr<SessionBus> iconsBus,
                 ExportedMenu& exportedMenu);

  std::unique_ptr<SessionBus> bus;
  std::unique_ptr<InstanceName> name;
  std::unique_ptr<SessionBus> iconBus;
  StatusNotifierItem icon;
  HostMenu menu;
  TrayHostWatch hosts;
};
