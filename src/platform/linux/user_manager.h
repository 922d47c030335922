#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>

#include "platform/linux/user_bus.h"

namespace platform {

/// The user's own systemd manager. Units are named in full ("ollama.service"). Every operation
/// ends by its deadline; without an answer it is empty, and `failure` says why.
class UserManager {
 public:
  /// Unit to D-Bus object of every service that the manager has active or is about to start,
  /// stop or reload.
  std::optional<std::map<std::string, std::string, std::less<>>> loadedServices(
      Deadline deadline, BusFailure& failure);

  /// The main process of the service with that object; 0 when it has none.
  std::optional<std::uint32_t> mainPid(const std::string& object, Deadline deadline,
                                       BusFailure& failure);

  /// "active", "failed", …; "" for a unit that the manager doesn't know.
  std::optional<std::string> activeState(const std::string& unit, Deadline deadline,
                                         BusFailure& failure);

  /// Runs the job that stops (starts) a unit to its end: how that ended, "done" when well.
  std::optional<std::string> stop(const std::string& unit, Deadline deadline, BusFailure& failure);
  std::optional<std::string> start(const std::string& unit, Deadline deadline, BusFailure& failure);

 private:
  BusMessage property(const std::string& object, const char* interface, const char* name,
                      Deadline deadline, BusFailure& failure);
  std::optional<std::string> runJob(const char* method, const std::string& unit, Deadline deadline,
                                    BusFailure& failure);

  UserBus bus_;
};

}  // namespace platform
