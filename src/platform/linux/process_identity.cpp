#include "platform/linux/process_identity.h"

#include <sys/stat.h>
#include <sys/statfs.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <cerrno>

#include "platform/linux/file_reader.h"
#include "platform/processes.h"
#include "platform/signals.h"
#include "text/hash_combine.h"

namespace platform {

// These system calls are made by number, because the C library has had functions for them only
// since 2.36.

int openPidfd(pid_t pid) {
  const long fd = syscall(SYS_pidfd_open, pid, 0U);
  return fd < 0 ? -errno : static_cast<int>(fd);
}

int sendSignal(int pidfd, int signal) {
  return syscall(SYS_pidfd_send_signal, pidfd, signal, nullptr, 0U) == 0 ? 0 : errno;
}

std::optional<std::uint64_t> uniqueInode(int pidfd) {
  if (!hasUniqueInodes()) return std::nullopt;
  struct stat status = {};
  if (fstat(pidfd, &status) != 0) return std::nullopt;
  return status.st_ino;
}

bool hasUniqueInodes() {
  // Pidfds have inodes that are never used again since they have a file system of their own.
  static const bool has = [] {
    constexpr auto kPidfs = 0x50494446;
    const FileDescriptor own(openPidfd(getpid()));
    struct statfs fileSystem = {};
    return sizeof(ino_t) >= sizeof(std::uint64_t) && own.isOpen() &&
           fstatfs(own.get(), &fileSystem) == 0 && fileSystem.f_type == kPidfs;
  }();
  return has;
}

std::optional<std::uint64_t> uniqueInodeOfPid(pid_t pid) {
  const FileDescriptor process(openPidfd(pid));
  return process.isOpen() ? uniqueInode(process.get()) : std::nullopt;
}

std::uint64_t madeIdentity(std::uint64_t startTicks, std::string_view executable,
                           std::string_view arguments) {
  std::size_t seed = 0;
  text::hashCombine(seed, startTicks);
  text::hashCombine(seed, executable);
  text::hashCombine(seed, arguments);
  return seed;
}

std::optional<std::uint64_t> processIdentity(std::int32_t pid) {
  return SignalTarget(pid).identity();
}

}  // namespace platform
