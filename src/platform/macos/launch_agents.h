#pragma once

#include <chrono>
#include <optional>
#include <string>
#include <vector>

#include "platform/launch_agents.h"

namespace platform {

/// How long we wait for launchctl when it is asked which launch agents are loaded.
inline constexpr std::chrono::seconds kListLimit{2};
/// How long a user waits at most while a launch agent is stopped or started, for all attempts
/// together.
inline constexpr std::chrono::seconds kActionLimit{10};

/// As in platform/launch_agents.h, with another limit than these.
std::optional<LaunchAgentAnswer> loadedLaunchAgents(std::chrono::milliseconds limit);
std::vector<ServiceAttempt> stopAttempts(const std::string& label, const std::string& path,
                                         std::chrono::milliseconds limit);
std::vector<ServiceAttempt> startAttempts(const std::string& path, std::chrono::milliseconds limit);

}  // namespace platform
