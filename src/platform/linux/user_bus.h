#pragma once

#include <systemd/sd-bus.h>

#include <chrono>
#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "platform/linux/sd_bus_ptr.h"

namespace platform {

/// The latest time at which a function returns.
using Deadline = std::chrono::steady_clock::time_point;

/// Why there is no connection or no answer.
struct BusFailure {
  int number = 0;    ///< an error number; 0: none
  std::string name;  ///< the D-Bus error that was answered, or ""
  std::string text;  ///< the text that came with the error
};

class UserBus;

/// One call whose answer is awaited. There is no time limit: it is answered or the connection is
/// lost. Destroying it cancels it.
class BusCall {
 public:
  /// Sends a call of a method; `signature` and what follows are its arguments, as
  /// sd_bus_message_append takes them. `bus` outlives the call.
  template <typename... Arguments>
  BusCall(UserBus& bus, const char* destination, const char* path, const char* interface,
          const char* member, const char* signature = "", Arguments... arguments)
      : BusCall(bus, request(bus, destination, path, interface, member, [&](sd_bus_message* call) {
                  return sd_bus_message_append(call, signature, arguments...);
                })) {}
  BusCall(const BusCall&) = delete;
  BusCall& operator=(const BusCall&) = delete;

  /// Whether the answer has come, or can't come any more.
  bool isAnswered() const { return answer_ != nullptr || failure_.number != 0; }

  /// The answer; null before there is one, and for an error.
  sd_bus_message* answer() const { return failure_.number == 0 ? answer_.get() : nullptr; }
  const BusFailure& failure() const { return failure_; }

 private:
  BusCall(UserBus& bus, BusMessage call);
  static BusMessage request(UserBus& bus, const char* destination, const char* path,
                            const char* interface, const char* member,
                            const std::function<int(sd_bus_message*)>& addArguments);
  static int arrived(sd_bus_message* answer, void* self, sd_bus_error*);

  BusMessage answer_;
  BusFailure failure_;
  BusSlot slot_;
};

/// A connection to the user's message bus that never blocks by itself: connecting, sending and
/// receiving go on step by step in waitUntil and catchUp.
class UserBus {
 public:
  enum class Progress {
    done,  ///< what was waited for is there
    late,  ///< it is not there yet
    lost   ///< the connection has ended, and nothing more will come
  };

  /// Starts connecting to the bus at one of these sockets (see connectToUserBus). Calls can be
  /// made at once; they are sent when the bus has accepted the connection. Null, with `failure`
  /// filled, when there is no bus.
  [[nodiscard]] static std::unique_ptr<UserBus> open(const std::vector<std::string>& sockets,
                                                     BusFailure& failure);

  /// Handles messages until `isDone` or the deadline, however many the other side sends.
  Progress waitUntil(const std::function<bool()>& isDone, Deadline deadline, BusFailure& failure);

  /// Handles the messages that have already come: `most` of them at most, and for at most 20 ms.
  Progress catchUp(const std::function<bool()>& isDone, BusFailure& failure,
                   std::size_t most = 1'000);

  sd_bus* get() const { return bus_.get(); }

 private:
  explicit UserBus(sd_bus* bus) : bus_(bus) {}
  Progress workOff(const std::function<bool()>& isDone, Deadline deadline, std::size_t most,
                   bool waits, BusFailure& failure);

  BusPtr bus_;
};

}  // namespace platform
