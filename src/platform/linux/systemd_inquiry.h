#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "platform/launch_agents.h"
#include "platform/linux/user_bus.h"

namespace platform {

/// What the manager said of its services.
struct LoadedServices {
  /// The main process of every service that is active, starting, stopping or reloading, by the
  /// unit's full name; none when it has none or was not asked for.
  std::map<std::string, std::optional<std::int32_t>, std::less<>> pids;
  /// When the first pid was asked for, on processClock().
  std::uint64_t askedAt = 0;

  /// The part that is about these files. A file that is a link to another unit's file stands for
  /// that unit: the manager lists a unit only by its own name, not by an alias.
  LoadedLaunchAgents launchAgentsOf(std::span<const LaunchAgentFile> files) const;
};

/// Asks the user's manager which services are loaded, and then for the main processes of those
/// that have a file, the first 256 of them. At most 10,000 services are looked at.
class SystemdInquiry {
 public:
  /// Begins it. `bus` outlives it.
  explicit SystemdInquiry(UserBus& bus);

  /// Handles what was answered and asks the next question. True when it is over.
  bool carryOn(std::span<const LaunchAgentFile> files);

  /// The answer; none when the manager can't be asked. To be called once, when it is over.
  std::optional<LoadedServices> takeAnswer();

 private:
  bool readList();
  void askForPids(std::span<const LaunchAgentFile> files);

  UserBus& bus_;
  BusCall list_;
  bool listWasRead_ = false;
  bool failed_ = false;
  std::map<std::string, std::string, std::less<>> objects_;  ///< by unit
  LoadedServices services_;
  std::vector<std::pair<std::string, std::unique_ptr<BusCall>>> pids_;  ///< by unit
  std::size_t answered_ = 0;  ///< how many of these, from the first, are answered
};

}  // namespace platform
