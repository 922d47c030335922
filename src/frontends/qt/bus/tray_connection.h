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

/// All that the program is on one connection to the session bus: its name, its icon and the
/// menu for tray hosts. When the connection is lost, all of it is.
struct TrayConnection {
  TrayConnection(NamedBus namedBus, ExportedMenu& exportedMenu);

  std::unique_ptr<SessionBus> bus;
  std::unique_ptr<InstanceName> name;
  StatusNotifierItem icon;
  HostMenu menu;
  TrayHostWatch hosts;
};
