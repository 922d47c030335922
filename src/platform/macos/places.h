#pragma once

#include <chrono>

/// What the tests have otherwise: where things are on a Mac, and how long launchctl may take.
namespace platform::Places {

extern const char* const kLaunchctl;
extern const char* const kMachineLaunchAgents;  ///< the folder of the machine's launch agent files
extern const char* const kActivityMonitor;
extern const char* const kDockerDesktop;

/// How long we wait for launchctl when it is asked which launch agents are loaded.
extern const std::chrono::milliseconds kListLimit;
/// How long a user waits at most while a launch agent is stopped or started, for all attempts
/// together.
extern const std::chrono::milliseconds kActionLimit;

}  // namespace platform::Places
