#pragma once

/// Where things are on a Mac. The tests have places of their own.
namespace platform::Places {

extern const char* const kLaunchctl;
extern const char* const kMachineLaunchAgents;  ///< the folder of the machine's launch agent files
extern const char* const kActivityMonitor;
extern const char* const kDockerDesktop;

}  // namespace platform::Places
