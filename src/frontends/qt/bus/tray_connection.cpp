#include "frontends/qt/bus/tray_connection.h"

#include <utility>

#include "frontends/qt/pictures.h"

TrayConnection::TrayConnection(NamedBus namedBus, ExportedMenu& exportedMenu)
    : bus(std::move(namedBus.bus)),
      name(std::move(namedBus.name)),
      icon(bus->get(), badgePictures(), HostMenu::kPath),
      menu(bus->get(), exportedMenu),
      hosts(bus->get(), icon.serviceName()) {
  bus->serve();
}
