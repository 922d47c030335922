#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/launch_agents.h"
#include "platform/linux/user_bus_socket.h"

namespace platform {

/// Stops or starts one service in the background, over a connection of its own. It ends when the
/// manager reports the end of the job that it has queued for it, or the connection is lost; there
/// is no time limit.
class SystemdOperation {
 public:
  enum class Verb { stop, start };

  /// `label`: the unit's name without ".service". `sockets`: where the manager's bus may be.
  SystemdOperation(
      Verb verb, const std::string& label,
      std::function<std::vector<std::string>()> sockets = [] { return userBusSockets(); });
  ~SystemdOperation();
  SystemdOperation(const SystemdOperation&) = delete;
  SystemdOperation& operator=(const SystemdOperation&) = delete;

  /// Starts the operation or continues it, for at most 20 ms. Returns how it ended; none while it
  /// goes on. Stopping a unit that is unknown or not active fails with "could not find"; starting
  /// one that is already active succeeds.
  std::optional<ServiceReply> poll();

 private:
  class Talk;

  Verb verb_;
  std::string unit_;
  std::function<std::vector<std::string>()> sockets_;
  std::unique_ptr<Talk> talk_;
  std::optional<ServiceReply> reply_;
};

}  // namespace platform
