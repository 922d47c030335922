#pragma once

#include <systemd/sd-bus.h>

#include <cstddef>
#include <string>
#include <vector>

/// One item of the exported menu, as a tray host reads it.
struct HostItem {
  int id = 0;
  std::string label;
  std::string type;
  std::string accessible;
  bool enabled = true;
  std::size_t iconBytes = 0;
  std::vector<HostItem> children;
};

/// Reads the name and value that the message holds next; a name that is not known is passed over.
void readHostItemProperty(sd_bus_message* message, HostItem& item);

/// Reads the item that the message holds next, and all that is below it.
HostItem readHostItem(sd_bus_message* message);
