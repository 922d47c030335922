#include "platform/signals.h"

#include <unistd.h>

#include <cerrno>
#include <csignal>

#include "platform/linux/process_identity.h"
#include "platform/linux/process_reader.h"

namespace platform {
namespace {

int numberOf(Signal signal) {
  return signal == Signal::forceQuit ? SIGKILL : SIGTERM;
}

/// `value`, which was read by pid, if it is certainly the pinned process's. A pid is not reused
/// before its process is reaped: if that is still there now, the pid was its own all the time.
/// Without a pin this can't be known, and `value` is returned.
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
  if (handle_ == -ESRCH) return ESRCH;  // the pid may already belong to another process
  return kill(pid_, numberOf(signal)) == 0 ? 0 : errno;
}

}  // namespace platform
