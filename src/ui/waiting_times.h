#pragma once

#include <array>

/// When the controller looks again, and how long it waits for what it has asked for; in seconds.
namespace WaitingTimes {

inline constexpr double kRefreshInterval = 5;

/// After a process was told to end: when the machine is looked at once more.
inline constexpr std::array<double, 3> kAfterQuit{0.25, 1.0, 2.5};

/// How long a process has to quit before the user is told that it is still there.
inline constexpr double kQuitPatience = 3;

/// How long the head of a family has before the others are asked to quit.
inline constexpr double kFamilyPatience = 5;

/// While a launch agent is being stopped or started, how often it is asked how that goes on.
inline constexpr double kOperationInterval = 0.1;

}  // namespace WaitingTimes
