#include "frontends/qt/bus/tray_connection.h"

#include <utility>

#include "frontends/qt/pictures.h"

TrayConnection::TrayConnection(NamedBus namedBus, std::unique_ptr<SessionBus> iconsBus,
                               ExportedMenu& exportedMenu)
    : bus(std::move(namedBus.bus)),
      name(std::move(namedBus.name)),
      iconBus(std::move(iconsBus)),
      icon(iconBus->get(), {badgePictures(), attentionPictures()}, HostMenu::kPath),
      menu(iconBus->get(), exportedMenu),
      hosts(iconBus->get()),
      appearance(bus->get()),
      notifications(bus->get()) {
  bus->serve();
  iconBus->serve();
}
