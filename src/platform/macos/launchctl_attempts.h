#pragma once

#include <chrono>
#include <string>
#include <vector>

#include "platform/launch_agents.h"

namespace platform {

/// The arguments of one run of launchctl.
using LaunchctlCommand = std::vector<std::string>;

/// What stops and starts a launch agent, in the order in which it is tried: today's commands first,
/// then those that older systems know. `domain`: launchd's name for the user's session.
///@{
std::vector<LaunchctlCommand> stopCommands(const std::string& domain, const std::string& label,
                                           const std::string& path);
std::vector<LaunchctlCommand> startCommands(const std::string& domain, const std::string& path);
///@}

/// An attempt for each command. Together they take no longer than `limit`, from the first one's
/// start on: an attempt for which no time is left fails at once.
std::vector<ServiceAttempt> launchctlAttempts(const std::vector<LaunchctlCommand>& commands,
                                              std::chrono::milliseconds limit);

}  // namespace platform
