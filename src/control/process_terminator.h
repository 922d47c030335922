#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <utility>

/// The only place that sends signals.
namespace ProcessTerminator {

/// Asks one process to quit, or kills it with `force`: whether it is gone or was
/// signalled, and a sentence for the user. Only processes of the user's own are
/// signalled; a refusal explains itself. Nothing is ever retried with another signal.
[[nodiscard]] std::pair<bool, std::string> terminate(std::int32_t pid, bool force);

/// As above, for the process that had this platform::processIdentity when the user was shown
/// it. When the pid belongs to another process by now nothing is sent, and the process that
/// was meant counts as already gone; so it does when it can't be told which process was meant
/// (no identity), or which one has the pid now.
[[nodiscard]] std::pair<bool, std::string> terminate(std::int32_t pid, bool force,
                                                     std::optional<std::uint64_t> identity);

/// The answer for a process that has ended by itself: a success.
std::pair<bool, std::string> alreadyGone(std::int32_t pid);

}  // namespace ProcessTerminator
