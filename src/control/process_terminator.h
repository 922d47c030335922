#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <utility>

/// The only place that sends signals.
namespace ProcessTerminator {

/// Asks one process to quit or, with `force`, kills it. Returns whether it was signalled or is
/// gone, and a sentence for the user. Only the user's own processes are signalled; for others the
/// sentence says why not. Nothing is ever retried with another signal.
[[nodiscard]] std::pair<bool, std::string> terminate(std::int32_t pid, bool force);

/// As above, for the process that had this platform::processIdentity when the user was shown it.
/// When the pid now belongs to another process, nothing is sent and the process that was meant
/// counts as already gone. The same holds when it is not known which process was meant (no
/// identity) or which one has the pid now.
[[nodiscard]] std::pair<bool, std::string> terminate(std::int32_t pid, bool force,
                                                     std::optional<std::uint64_t> identity);

/// The answer for a process that has ended by itself: a success.
std::pair<bool, std::string> alreadyGone(std::int32_t pid);

}  // namespace ProcessTerminator
