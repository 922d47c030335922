#include "platform/macos/launchctl_inquiry.h"

#include "platform/macos/launchctl.h"
#include "platform/macos/launchctl_list.h"
#include "platform/processes.h"

namespace platform {

LaunchAgentAnswer LaunchctlInquiry::ask(std::chrono::milliseconds limit, Clock::time_point now) {
  constexpr std::chrono::minutes kSilence(1);
  if (now < silentUntil_) return last_;
  // Before it is asked: a process that has started since may have been given the pid of one that
  // the list names.
  const std::uint64_t askedAt = processClock();
  const LaunchctlReply reply = runLaunchctl({"list"}, Capture::everything, Clock::now() + limit);
  if (reply.isLate) {
    silentUntil_ = now + kSilence;
    return last_;
  }
  last_ = {reply.status == 0 ? parseLaunchctlList(reply.text) : LoadedLaunchAgents(), askedAt};
  return last_;
}

}  // namespace platform
