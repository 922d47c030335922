#include "platform/macos/launchctl_limits.h"

namespace platform::LaunchctlLimits {

// Longer than anything takes, however busy the machine is.
const std::chrono::milliseconds kList{60'000};
const std::chrono::milliseconds kAction{60'000};

}  // namespace platform::LaunchctlLimits
