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
  /// Every service that is active or about to start, stop or reload, by its unit's full name,
  /// with its main process; none: it has none, or was not asked for it.
  std::map<std::string, std::optional<std::int32_t>, std::less<>> pids;
  /// When the first pid was asked for, on processClock().
  std::uint64_t askedAt = 0;

  /// What of it is about these files. A file that is a link to another unit's stands for that
  /// one: the manager lists an alias under the name of the unit only.
  LoadedLaunchAgents launchAgentsOf(std::span<const LaunchAgentFile> files) const;
};

/// Asks the user's manager which services it has loaded, and then for the main processes of those
/// that files are about: of the first 256. Of more than 10,000 services the rest is passed over.
class ServiceInquiry {
 public:
  /// Begins it. `bus` outlives it.
  explicit ServiceInquiry(UserBus& bus);

  /// Takes in what was answered, and asks what is to be asked next. True: it is over.
  bool carryOn(std::span<const LaunchAgentFile> files);

  /// What was said; none when the manager can't be asked. Once, when it is over.
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
  std::size_t answered_ = 0;                                            ///< of them, from the first
};

}  // namespace platform
