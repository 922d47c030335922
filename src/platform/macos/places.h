#pragma once

/// Where things stand on a Mac.
namespace platform::places {

extern const char* const kLaunchctl;
extern const char* const kMachineLaunchAgents;  ///< the folder of the machine's job files
extern const char* const kActivityMonitor;
extern const char* const kDockerDesktop;

}  // namespace platform::places
