#pragma once

#include <systemd/sd-bus.h>

#include <chrono>
#include <memory>
#include <string>

namespace platform {

/// When the caller wants its answer at the latest.
using Deadline = std::chrono::steady_clock::time_point;

/// Why a call gave no answer.
struct BusFailure {
  int number = 0;    ///< an error number; ETIMEDOUT: the deadline passed
  std::string name;  ///< the D-Bus error, or ""
  std::string text;  ///< in the other side's words, or the system's
};

using BusMessage = std::unique_ptr<sd_bus_message, decltype(&sd_bus_message_unref)>;

/// A connection to the user's message bus: made when it is needed, kept, and made anew when it
/// was lost. Nothing waits beyond its deadline, whatever the other side does, and no service
/// is started by asking it.
class UserBus {
 public:
  /// No call waits longer than this for its answer, however far its deadline is: it is the
  /// interface that waits. With the rest of a refresh it has to stay below 2 seconds.
  static constexpr std::chrono::milliseconds kPatience{1500};

  /// One call of a method; `signature` and what follows are its arguments, as
  /// sd_bus_message_append takes them. Null, and `failure` filled, when it gave no answer.
  template <typename... Arguments>
  BusMessage call(const char* destination, const char* path, const char* interface,
                  const char* member, Deadline deadline, BusFailure& failure,
                  const char* signature = "", Arguments... arguments) {
    BusMessage request = newCall(destination, path, interface, member, deadline, failure);
    if (request && append(sd_bus_message_append(request.get(), signature, arguments...), failure)) {
      return send(std::move(request), deadline, failure);
    }
    return none();
  }

  /// A call to fill by hand, and sending it.
  BusMessage newCall(const char* destination, const char* path, const char* interface,
                     const char* member, Deadline deadline, BusFailure& failure);
  BusMessage send(BusMessage request, Deadline deadline, BusFailure& failure);

  /// Handles one message that came in, waiting for it if need be. False when the deadline
  /// passed or the connection was lost.
  bool processOne(Deadline deadline, BusFailure& failure);

  /// The connection; null before the first call and after it was lost.
  sd_bus* get() const { return bus_.get(); }

 private:
  struct Close {
    void operator()(sd_bus* bus) const { sd_bus_close_unref(bus); }
  };

  static BusMessage none() { return {nullptr, sd_bus_message_unref}; }
  static bool append(int result, BusFailure& failure);
  bool connect(Deadline deadline, BusFailure& failure);
  bool isAlive();
  bool lose(int error, BusFailure& failure);

  std::unique_ptr<sd_bus, Close> bus_;
};

}  // namespace platform
