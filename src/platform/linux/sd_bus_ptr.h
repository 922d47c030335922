#pragma once

#include <systemd/sd-bus.h>

#include <memory>

struct SdBusUnref {
  void operator()(sd_bus* bus) const { sd_bus_close_unref(bus); }
  void operator()(sd_bus_slot* slot) const { sd_bus_slot_unref(slot); }
  void operator()(sd_bus_message* message) const { sd_bus_message_unref(message); }
};

using BusPtr = std::unique_ptr<sd_bus, SdBusUnref>;
/// Keeps a match, an object or a pending call alive; releasing it cancels that.
using BusSlot = std::unique_ptr<sd_bus_slot, SdBusUnref>;
using BusMessage = std::unique_ptr<sd_bus_message, SdBusUnref>;
