#include "platform/signals.h"

#include <cerrno>
#include <csignal>

#include "platform/macos/process_record.h"
#include "platform/processes.h"

namespace platform {

// Darwin has no handle that holds on to a process.
SignalTarget::SignalTarget(std::int32_t pid) : pid_(pid), handle_(-1) {}

SignalTarget::~SignalTarget() = default;

std::optional<std::uint32_t> SignalTarget::effectiveUid() const {
  const auto record = processRecord(pid_);
  if (!record) return std::nullopt;
  return record->effectiveUid;
}

std::optional<std::uint64_t> SignalTarget::identity() const {
  return processIdentity(pid_);
}

int SignalTarget::send(Signal signal) const {
  if (pid_ < 1) return EINVAL;
  errno = 0;
  return kill(pid_, signal == Signal::forceQuit ? SIGKILL : SIGTERM) == 0 ? 0 : errno;
}

}  // namespace platform
