#include "floor.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace bench {
namespace {

constexpr std::size_t kEntriesSize = std::size_t{1} << 20;  // all of 10,000 processes at once
constexpr std::size_t kContentSize = std::size_t{4} << 20;  // the longest command line at once

}  // namespace

Floor::Floor()
    : proc_(open("/proc", O_RDONLY | O_DIRECTORY | O_CLOEXEC)),
      entries_(kEntriesSize),
      content_(kContentSize) {
  if (proc_ < 0) {
    std::perror("/proc");
    std::exit(1);
  }
}

Floor::~Floor() {
  close(proc_);
}

std::size_t Floor::read() {
  std::size_t count = 0;
  lseek(proc_, 0, SEEK_SET);
  for (;;) {
    const auto length = getdents64(proc_, entries_.data(), entries_.size());
    if (length <= 0) return count;
    for (ssize_t position = 0; position < length;) {
      const char* entry = entries_.data() + position;
      const char* name = entry + offsetof(dirent64, d_name);
      unsigned short size = 0;
      std::memcpy(&size, entry + offsetof(dirent64, d_reclen), sizeof size);
      position += size;
      if (*name < '1' || *name > '9') continue;
      readProcess(name);
      ++count;
    }
  }
}

void Floor::readProcess(const char* pid) {
  struct stat status = {};
  fstatat(proc_, pid, &status, 0);

  char path[32];
  const std::size_t length = std::strlen(pid);
  std::memcpy(path, pid, length);
  std::memcpy(path + length, "/statm", sizeof "/statm");
  readFile(path);
  std::memcpy(path + length, "/cmdline", sizeof "/cmdline");
  readFile(path);
}

void Floor::readFile(const char* path) {
  const int file = openat(proc_, path, O_RDONLY | O_CLOEXEC);
  if (file < 0) return;
  [[maybe_unused]] const ssize_t length = ::read(file, content_.data(), content_.size());
  close(file);
}

}  // namespace bench
