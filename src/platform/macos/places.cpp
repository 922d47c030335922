#include "platform/macos/places.h"

namespace platform::Places {

const char* const kLaunchctl = "/bin/launchctl";
const char* const kMachineLaunchAgents = "/Library/LaunchAgents";
const char* const kActivityMonitor = "/System/Applications/Utilities/Activity Monitor.app";
const char* const kDockerDesktop = "/Applications/Docker.app";

}  // namespace platform::Places
