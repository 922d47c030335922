#pragma once

#include <string>

#include "platform/linux/sd_bus_ptr.h"

/// A connection of the test's own to the bus at that address.
BusPtr connectedBus(const std::string& address);
