#pragma once

#include <chrono>

/// How long launchctl may take. The tests have longer limits of their own.
namespace platform::LaunchctlLimits {

/// When it is asked which launch agents are loaded.
extern const std::chrono::milliseconds kList;

/// While a launch agent is stopped or started: the user waits no longer than this, for all attempts
/// together.
extern const std::chrono::milliseconds kAction;

}  // namespace platform::LaunchctlLimits
