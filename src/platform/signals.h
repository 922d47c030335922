#pragma once

#include <cstdint>
#include <optional>

namespace platform {

/// `quit` asks a process to end (SIGTERM), `forceQuit` ends it (SIGKILL).
enum class Signal { quit, forceQuit };

/// Holds on to one process, so that the process that was examined is the one that is signalled,
/// even if its pid is given to another in the meantime. Where the system can't hold on to a
/// process, the pid is used; a process that was already gone stays gone.
class [[nodiscard]] SignalTarget {
 public:
  /// Never fails: that a process is gone or can't be held shows in the calls that follow.
  explicit SignalTarget(std::int32_t pid);
  ~SignalTarget();
  SignalTarget(const SignalTarget&) = delete;
  SignalTarget& operator=(const SignalTarget&) = delete;

  /// The effective user id of the process; none when it can't be told.
  std::optional<std::uint32_t> effectiveUid() const;

  /// platform::processIdentity of the process; none when it can't be told.
  std::optional<std::uint64_t> identity() const;

  /// Sends the signal: 0, or the error number. A pid below 1 is never signalled (it
  /// would name a group of processes): EINVAL.
  [[nodiscard]] int send(Signal signal) const;

 private:
  std::int32_t pid_;
  [[maybe_unused]] int handle_;  // where the platform has one
};

}  // namespace platform
