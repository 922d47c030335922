#pragma once

#include <sys/types.h>

#include <cstdint>
#include <optional>

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

}  // namespace platform
