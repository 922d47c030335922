#pragma once

#include <cstdint>
#include <optional>

namespace platform {

/// Asks a process to end (SIGTERM); ends it (SIGKILL).
enum class Signal { quit, forceQuit };

/// One process held fast, so that the process that was examined is the one that is
/// signalled even when its pid is given to another meanwhile. Where the system can't
/// hold a process, the pid alone stands for it; what is gone already stays gone.
class [[nodiscard]] SignalTarget {
 public:
  /// Never fails: a process that is gone, or can't be held, shows in what follows.
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
