#include "platform/macos/launchctl_limits.h"

namespace platform::LaunchctlLimits {

const std::chrono::milliseconds kList{1'000};
const std::chrono::milliseconds kAction{10'000};

}  // namespace platform::LaunchctlLimits
