#include "platform/linux/pidfd.h"

#include <sys/syscall.h>
#include <unistd.h>

#include <cerrno>

namespace platform {

// By number: the C library has had functions for these since 2.36 only.

int openPidfd(pid_t pid) {
  const long fd = syscall(SYS_pidfd_open, pid, 0U);
  return fd < 0 ? -errno : static_cast<int>(fd);
}

int sendSignal(int pidfd, int signal) {
  return syscall(SYS_pidfd_send_signal, pidfd, signal, nullptr, 0U) == 0 ? 0 : errno;
}

}  // namespace platform
