#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "platform/launch_agents.h"
#include "platform/linux/systemd_inquiry.h"
#include "platform/linux/user_bus_socket.h"

namespace platform {

/// Asks the user's manager which launch agents are loaded, waiting no longer than the budget. A
/// manager that takes longer is not asked again for a while, because every refresh would freeze
/// the interface for the whole budget. Until then its last answer is used, and a late answer as
/// soon as it arrives.
class LoadedUnits {
 public:
  struct Options {
    std::chrono::milliseconds budget{300};  ///< for all questions of one read together
    std::chrono::seconds rest{60};          ///< after a read that took longer
    /// Where the manager's bus may be.
    std::function<std::vector<std::string>()> sockets = [] { return userBusSockets(); };
  };
  LoadedUnits() = default;
  explicit LoadedUnits(Options options) : options_(std::move(options)) {}

  /// None when there is no manager, or it can't be asked, or has never answered.
  std::optional<LaunchAgentAnswer> read(std::span<const LaunchAgentFile> files);

 private:
  void inquire(std::span<const LaunchAgentFile> files, Deadline deadline);
  bool connect();
  void disconnect();
  void takeAnswer();
  void restAWhile();

  Options options_;
  Deadline restsUntil_;
  std::unique_ptr<UserBus> bus_;           ///< kept from one inquiry to the next
  std::optional<SystemdInquiry> inquiry_;  ///< under way
  std::optional<LoadedServices> last_;     ///< what the manager said last
};

}  // namespace platform
