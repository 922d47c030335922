#pragma once

#include <chrono>
#include <string>

#include "platform/launch_agents.h"
#include "platform/linux/user_manager.h"

namespace platform {

/// Stops a job and waits until that is done. One that the manager doesn't know, or that is not
/// active, it "could not find".
ServiceReply stopJob(UserManager& manager, const std::string& label,
                     std::chrono::milliseconds limit);

/// Starts a job and waits until that is done. One that is active already counts as started.
ServiceReply startJob(UserManager& manager, const std::string& label,
                      std::chrono::milliseconds limit);

}  // namespace platform
