#pragma once

#include <memory>

#include "frontends/qt/bus/appearance_watch.h"
#include "frontends/qt/bus/host_menu.h"
#include "frontends/qt/bus/instance_name.h"
#include "frontends/qt/bus/notifications.h"
#include "frontends/qt/bus/session_bus.h"
#include "frontends/qt/bus/status_notifier_item.h"
#include "frontends/qt/bus/tray_host_watch.h"

/// A bus and the program's name on it.
struct NamedBus {
  std::unique_ptr<SessionBus> bus;
  std::unique_ptr<InstanceName> name;
};

/// Everything of the program that is on the session bus: its name, the icon and menu for tray
/// hosts, and what it asks of the desktop. Icon and menu have a connection of their own, without a
/// well-known name, because GNOME's extension takes an icon that it finds under two names for two
/// icons. When one of the connections is lost, everything has to be made anew.
struct TrayConnection {
  TrayConnection(NamedBus namedBus, std::unique_ptr<SessionBus> iconsBus,
                 ExportedMenu& exportedMenu);

  std::unique_ptr<SessionBus> bus;
  std::unique_ptr<InstanceName> name;
  std::unique_ptr<SessionBus> iconBus;
  StatusNotifierItem icon;
  HostMenu menu;
  TrayHostWatch hosts;
  AppearanceWatch appearance;
  Notifications notifications;
};
