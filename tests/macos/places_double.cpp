#include "macos/stage.h"
#include "platform/macos/places.h"

namespace platform::Places {

const char* const kLaunchctl = Stage::launchctlPath();
const char* const kMachineLaunchAgents = Stage::machineLaunchAgentsPath();
const char* const kActivityMonitor = "/System/Applications/Utilities/Activity Monitor.app";
const char* const kDockerDesktop = Stage::dockerPath();

}  // namespace platform::Places
