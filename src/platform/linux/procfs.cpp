#include "platform/linux/procfs.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <cstring>
#include <memory>

#include "text/decimal.h"

namespace platform {
namespace {

/// "PID" or "PID/file", made without an allocation.
class ProcPath {
 public:
  explicit ProcPath(std::int32_t pid, std::string_view file = {}) {
    char* end = std::to_chars(bytes_, bytes_ + sizeof bytes_, pid).ptr;
    if (!file.empty()) {
      *end++ = '/';
      end = std::copy_n(file.data(), std::min(file.size(), kLongestFile), end);
    }
    *end = '\0';
  }
  const char* get() const { return bytes_; }

 private:
  static constexpr std::size_t kLongestFile = 32;  // "task/PID/cmdline" is the longest
  char bytes_[kLongestFile + 16] = {};
};

/// The pid that a name in /proc is; 0 when it is no pid.
std::int32_t pidOf(std::string_view name) {
  return text::decimal<std::int32_t>(name).value_or(0);
}

}  // namespace

ProcFs::ProcFs(const char* root) : root_(::open(root, O_PATH | O_DIRECTORY | O_CLOEXEC)) {}

// By getdents64: opendir takes 32 KiB from the heap, and gives them back, at each refresh.
void ProcFs::listPids(std::vector<std::int32_t>& pids) const {
  pids.clear();
  const FileDescriptor folder(openat(root_.get(), ".", O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  if (!folder.isOpen()) return;

  constexpr std::size_t kRoom = 8 << 10;
  alignas(dirent64) char entries[kRoom];
  for (;;) {
    const ssize_t length = getdents64(folder.get(), entries, sizeof entries);
    if (length <= 0) break;
    for (ssize_t at = 0; at < length;) {
      const auto* const entry = reinterpret_cast<const dirent64*>(entries + at);
      if (const std::int32_t pid = pidOf(entry->d_name); pid > 0) pids.push_back(pid);
      at += entry->d_reclen;
    }
  }
  std::ranges::sort(pids);
}

std::optional<std::int32_t> ProcFs::anotherThread(std::int32_t pid) const {
  FileDescriptor folder = open(pid, "task");
  const std::unique_ptr<DIR, int (*)(DIR*)> entries(fdopendir(folder.get()), closedir);
  if (!entries) return std::nullopt;
  folder.release();

  while (const dirent* entry = readdir(entries.get())) {
    const std::int32_t thread = pidOf(entry->d_name);
    if (thread > 0 && thread != pid) return thread;
  }
  return std::nullopt;
}

std::optional<std::uint32_t> ProcFs::owner(std::int32_t pid) const {
  struct stat status = {};
  if (fstatat(root_.get(), ProcPath(pid).get(), &status, AT_SYMLINK_NOFOLLOW) != 0) {
    return std::nullopt;
  }
  return status.st_uid;
}

std::optional<std::string_view> ProcFs::read(std::int32_t pid, std::string_view file,
                                             FileReader& reader) const {
  const FileDescriptor opened = open(pid, file);
  return opened.isOpen() ? reader.read(opened.get()) : std::nullopt;
}

std::optional<std::string_view> ProcFs::read(const char* file, FileReader& reader) const {
  const FileDescriptor opened = open(file);
  return opened.isOpen() ? reader.read(opened.get()) : std::nullopt;
}

FileDescriptor ProcFs::open(std::int32_t pid, std::string_view file) const {
  return open(ProcPath(pid, file).get());
}

FileDescriptor ProcFs::open(const char* file) const {
  return FileDescriptor(openat(root_.get(), file, O_RDONLY | O_NOFOLLOW | O_CLOEXEC));
}

std::string_view ProcFs::target(std::int32_t pid, std::string_view link, Path& path) const {
  const ssize_t length =
      readlinkat(root_.get(), ProcPath(pid, link).get(), path.data(), path.size());
  return {path.data(), length > 0 ? static_cast<std::size_t>(length) : 0};
}

std::string_view ProcFs::executable(std::int32_t pid, Path& path, std::string_view link) const {
  std::string_view target = this->target(pid, link, path);
  constexpr std::string_view kDeleted = " (deleted)";
  if (target.ends_with(kDeleted)) target.remove_suffix(kDeleted.size());
  return target;
}

const ProcFs& systemProc() {
  static const ProcFs proc("/proc");
  return proc;
}

std::string problemOfProc(const char* root) {
  const std::string noProcess = "no process can be seen: ";
  const std::unique_ptr<DIR, int (*)(DIR*)> entries(opendir(root), closedir);
  if (!entries) return noProcess + root + ": " + std::strerror(errno);
  while (const dirent* entry = readdir(entries.get())) {
    if (pidOf(entry->d_name) > 0) return {};
  }
  return noProcess + root + " is not mounted";
}

}  // namespace platform
