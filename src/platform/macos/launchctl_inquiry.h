#pragma once

#include <chrono>

#include "platform/launch_agents.h"
#include "platform/macos/pipe_reader.h"

namespace platform {

/// Asks launchctl which launch agents are loaded. When it hangs, its last answer stands for a
/// minute, and it is not asked meanwhile: an interface that waits again and again is of no use.
class LaunchctlInquiry {
 public:
  /// The answer of now, or the last one. A failure is an answer: nothing is loaded. Waits for at
  /// most `limit`.
  LaunchAgentAnswer ask(std::chrono::milliseconds limit, Clock::time_point now = Clock::now());

  /// launchctl answers again, as another call of it has shown.
  void resume() { silentUntil_ = {}; }

 private:
  LaunchAgentAnswer last_;
  Clock::time_point silentUntil_;
};

}  // namespace platform
