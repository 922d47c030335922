#pragma once

#include <chrono>
#include <string>
#include <vector>

#include "platform/launch_agents.h"

namespace platform {

/// As in platform/launch_agents.h, with another limit than LaunchctlLimits::kAction.
std::vector<ServiceAttempt> stopAttempts(const std::string& label, const std::string& path,
                                         std::chrono::milliseconds limit);
std::vector<ServiceAttempt> startAttempts(const std::string& path, std::chrono::milliseconds limit);

}  // namespace platform
