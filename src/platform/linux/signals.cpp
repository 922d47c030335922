#include "platform/signals.h"

#include <unistd.h>

#include <cerrno>
#include <csignal>

#include "platform/linux/pidfd.h"
#include "platform/linux/process_reader.h"

namespace platform {
namespace {

int numberOf(Signal signal) {
  return signal == Signal::forceQuit ? SIGKILL : SIGTERM;
}

/// Whether `value` was read of the pinned process: a pid is not given anew before that one is
/// reaped, so if it is still there it was there all the time. Without a pin there is no telling.
template <typename Value>
std::optional<Value> ifStillThere(int handle, std::optional<Value> value) {
  return handle == -ESRCH || (handle >= 0 && sendSignal(handle, 0) == ESRCH) ? std::nullopt : value;
}

}  // namespace

SignalTarget::SignalTarget(std::int32_t pid)
    : pid_(pid), handle_(pid < 1 ? -EINVAL : openPidfd(pid)) {}

SignalTarget::~SignalTarget() {
  if (handle_ >= 0) close(handle_);
}

std::optional<std::uint32_t> SignalTarget::effectiveUid() const {
  if (pid_ < 1) return std::nullopt;
  return ifStillThere(handle_, processReader().effectiveUid(pid_));
}

std::optional<std::uint64_t> SignalTarget::identity() const {
  if (pid_ < 1) return std::nullopt;
  if (hasUniqueInodes()) {
    return ifStillThere(handle_, handle_ >= 0 ? uniqueInode(handle_) : std::nullopt);
  }
  return ifStillThere(handle_, processReader().identity(pid_));
}

int SignalTarget::send(Signal signal) const {
  if (pid_ < 1) return EINVAL;
  if (handle_ >= 0) return sendSignal(handle_, numberOf(signal));
  if (handle_ == -ESRCH) return ESRCH;  // the pid may be another's by now
  return kill(pid_, numberOf(signal)) == 0 ? 0 : errno;
}

}  // namespace platform
