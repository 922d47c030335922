#pragma once

#include <sys/types.h>

#include <cstdint>
#include <optional>

namespace platform {

/// Pins a process: a descriptor, which is never inherited, or minus the error number
/// (-ESRCH: no such process; -ENOSYS: the kernel is older than 5.3).
[[nodiscard]] int openPidfd(pid_t pid);

/// Signals the pinned process, or only looks whether it is still there (signal 0): 0, or the
/// error number.
[[nodiscard]] int sendSignal(int pidfd, int signal);

/// A number that no other process has or will have while the machine is up: the inode of its
/// pidfd. None where kernels give all pidfds one inode (before 6.9), or one of 32 bits.
std::optional<std::uint64_t> uniqueInode(int pidfd);

/// Whether this kernel gives every process such a number.
bool hasUniqueInodes();

}  // namespace platform
