#pragma once

#include <sys/types.h>

namespace platform {

/// Pins a process: a descriptor, which is never inherited, or minus the error number
/// (-ESRCH: no such process; -ENOSYS: the kernel is older than 5.3).
int openPidfd(pid_t pid);

/// Signals the pinned process, or only looks whether it is still there (signal 0): 0, or the
/// error number.
int sendSignal(int pidfd, int signal);

}  // namespace platform
