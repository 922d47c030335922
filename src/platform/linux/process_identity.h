#pragma once

#include <sys/types.h>

#include <cstdint>
#include <optional>
#include <string_view>

// What tells a process from a later one that is given the same pid: platform::processIdentity.

namespace platform {

/// Opens a pidfd, which pins the process: a descriptor that child processes do not inherit, or
/// minus the error number (-ESRCH: no such process; -ENOSYS: the kernel is older than 5.3).
[[nodiscard]] int openPidfd(pid_t pid);

/// Signals the pinned process; signal 0 only checks whether it is still there. Returns 0 or the
/// error number.
[[nodiscard]] int sendSignal(int pidfd, int signal);

/// A number that no other process has or will have while the machine is up: the inode of its
/// pidfd. None on kernels that give all pidfds the same inode (before 6.9) or one of 32 bits.
std::optional<std::uint64_t> uniqueInode(int pidfd);

/// Whether this kernel gives every process such a number.
bool hasUniqueInodes();

/// The same of the process that has the pid now; none when it is gone.
std::optional<std::uint64_t> uniqueInodeOfPid(pid_t pid);

/// Where there are no such numbers: made from when the process started, in clock ticks, its
/// executable and its arguments. Two processes of one pid that start within one tick are told apart
/// by what they run.
std::uint64_t madeIdentity(std::uint64_t startTicks, std::string_view executable,
                           std::string_view arguments);

}  // namespace platform
