#pragma once

#include <string>
#include <vector>

#include "platform/macos/pipe_reader.h"

namespace platform {

enum class Capture { errors, everything };

struct LaunchctlReply {
  int status = 0;       ///< its exit status; -1 when it did not start, or not end by itself in time
  std::string text;     ///< what it printed, or why it did not start; "" when not UTF-8
  bool isLate = false;  ///< it was killed at the deadline
};

/// Runs launchctl and waits for its end; at the deadline it is killed. What it prints is read
/// while it runs, so that a full pipe never blocks it; with Capture::errors only its standard
/// error is read. Leaves no child process behind, and lets no timer or other work of the run loop
/// happen meanwhile.
[[nodiscard]] LaunchctlReply runLaunchctl(const std::vector<std::string>& arguments,
                                          Capture capture, Clock::time_point deadline);

}  // namespace platform
