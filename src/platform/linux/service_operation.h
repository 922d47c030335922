#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/launch_agents.h"
#include "platform/linux/user_bus_socket.h"

namespace platform {

/// Stops or starts one service, over a connection of its own, in the background: how that ended is
/// what the manager says of the job that it makes of the order, or that the connection to it was
/// lost. No clock ends it.
class ServiceOperation {
 public:
  enum class Verb { stop, start };

  /// `label`: the unit's name without ".service". `sockets`: where the manager's bus may be.
  ServiceOperation(
      Verb verb, const std::string& label,
      std::function<std::vector<std::string>()> sockets = [] { return userBusSockets(); });
  ~ServiceOperation();
  ServiceOperation(const ServiceOperation&) = delete;
  ServiceOperation& operator=(const ServiceOperation&) = delete;

  /// Begins it and carries it on, for 20 ms at most: how it ended, and none before. Stopping what
  /// the manager doesn't know, or what is not active, "could not find" it; starting what is
  /// active already is done.
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
