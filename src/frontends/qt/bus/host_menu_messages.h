#pragma once

#include <string>
#include <vector>

#include "frontends/qt/exported_menu.h"
#include "platform/linux/sd_bus_ptr.h"

/// Writes the exported menu into D-Bus messages. Every function returns what sd-bus returned:
/// negative when it failed.
namespace HostMenuMessages {

/// Names of properties that were asked for; empty: all.
using PropertyNames = std::vector<std::string>;

[[nodiscard]] int readNames(sd_bus_message* call, PropertyNames& names);
[[nodiscard]] int readIds(sd_bus_message* call, std::vector<int>& ids);

/// Appends "(ia{sv}av)": the item and what is below it, `depth` levels of that (-1: all).
[[nodiscard]] int appendLayout(sd_bus_message* message, const ExportedMenu::Node& node, int depth,
                               const PropertyNames& names);

/// Appends "(ia{sv})".
[[nodiscard]] int appendProperties(sd_bus_message* message, const ExportedMenu::Node& node,
                                   const PropertyNames& names);

/// Appends one property as "v"; an empty string for one that the item does not have.
[[nodiscard]] int appendProperty(sd_bus_message* message, const ExportedMenu::Node& node,
                                 const std::string& name);

}  // namespace HostMenuMessages
