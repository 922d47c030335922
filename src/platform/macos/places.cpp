#include "platform/macos/places.h"

namespace platform::Places {

const char* const kLaunchctl = "/bin/launchctl";
const char* const kMachineLaunchAgents = "/Library/LaunchAgents";
const char* const kActivityMonitor = "/System/Applications/Utilities/Activity Monitor.app";
const char* const kDockerDesktop = "/Applications/Docker.app";
const std::chrono::milliseconds kListLimit{1'000};
const std::chrono::milliseconds kActionLimit{10'000};

}  // namespace platform::Places
