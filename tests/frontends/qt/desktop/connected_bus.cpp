#include "frontends/qt/desktop/connected_bus.h"

#include <gtest/gtest.h>

BusPtr connectedBus(const std::string& address) {
  sd_bus* bus = nullptr;
  EXPECT_GE(sd_bus_new(&bus), 0);
  BusPtr result(bus);
  EXPECT_GE(sd_bus_set_address(bus, address.c_str()), 0);
  EXPECT_GE(sd_bus_set_bus_client(bus, 1), 0);
  EXPECT_GE(sd_bus_start(bus), 0);
  return result;
}
