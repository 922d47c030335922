#include "frontends/terminal/held_stderr.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>
#include <array>

namespace terminal {
namespace {

constexpr off_t kCapacity = 64L * 1024;

int ordinaryErrors = -1;  // standard error as it was; -1: nothing is held back

/// A file in memory that cannot grow beyond the capacity, whoever writes to it.
int boundedFile() {
  const int file = memfd_create("vorda-errors", MFD_CLOEXEC | MFD_ALLOW_SEALING);
  if (file < 0) return -1;
  const bool bounded =
      ftruncate(file, kCapacity) == 0 && fcntl(file, F_ADD_SEALS, F_SEAL_GROW | F_SEAL_SHRINK) == 0;
  if (bounded) return file;
  close(file);
  return -1;
}

}  // namespace

HeldStderr::HeldStderr() {
  if (isatty(STDERR_FILENO) == 0) return;
  const int file = boundedFile();
  if (file < 0) return;
  ordinaryErrors = fcntl(STDERR_FILENO, F_DUPFD_CLOEXEC, 3);
  if (ordinaryErrors >= 0) dup2(file, STDERR_FILENO);
  close(file);
}

HeldStderr::~HeldStderr() {
  releaseHeldStderr();
}

void releaseHeldStderr() {
  if (ordinaryErrors < 0) return;
  const off_t length = lseek(STDERR_FILENO, 0, SEEK_CUR);
  std::array<char, 1024> buffer{};
  for (off_t at = 0; at < length;) {
    const auto wanted = static_cast<std::size_t>(std::min<off_t>(length - at, buffer.size()));
    const ssize_t got = pread(STDERR_FILENO, buffer.data(), wanted, at);
    if (got <= 0 || write(ordinaryErrors, buffer.data(), static_cast<std::size_t>(got)) < 0) break;
    at += got;
  }
  dup2(ordinaryErrors, STDERR_FILENO);
  close(ordinaryErrors);
  ordinaryErrors = -1;
}

}  // namespace terminal
