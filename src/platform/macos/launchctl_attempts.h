#pragma once

#include <chrono>
#include <string>
#include <vector>

#include "platform/launch_agents.h"

namespace platform {

/// The arguments of one run of launchctl.
using LaunchctlCommand = std::vector<std::string>;

/// An attempt for each command. Together they take no longer than `limit`, from the first one's
/// start on: an attempt for which no time is left fails at once.
std::vector<ServiceAttempt> launchctlAttempts(const std::vector<LaunchctlCommand>& commands,
                                              std::chrono::milliseconds limit);

}  // namespace platform
