#pragma once

#include <string>
#include <vector>

#include "platform/linux/sd_bus_ptr.h"

/// Two ends of a D-Bus connection without a bus between them: what the code under test
/// serves on one end, a test calls from the other. Both are worked off by the test.
class BusPair {
 public:
  BusPair();

  sd_bus* served() const { return served_.get(); }
  sd_bus* caller() const { return caller_.get(); }

  /// A call to fill with arguments.
  BusMessage newCall(const char* path, const char* interface, const char* member) const;

  /// Sends the call and waits for the answer, which may be an error. Null after 10 seconds.
  BusMessage send(const BusMessage& call) const;

  /// The member names of all signals that have arrived, in order.
  std::vector<std::string> takeSignals();

  /// The last signal of that name; null for none.
  sd_bus_message* lastSignal(const std::string& member) const;

 private:
  static int heard(sd_bus_message* message, void* self, sd_bus_error*);
  bool processBoth() const;

  BusPtr served_;
  BusPtr caller_;
  BusSlot filter_;
  std::vector<BusMessage> signals_;
};
