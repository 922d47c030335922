#include "soak/call_subject.h"

#include <fcntl.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <array>
#include <charconv>
#include <climits>
#include <fstream>
#include <string_view>

namespace {

std::string folderOf(pid_t thread) {
  return "/proc/" + std::to_string(thread);
}

/// The text at that address of the caller's; what of it can be read.
std::string textAt(pid_t thread, std::uint64_t address) {
  const int memory = open((folderOf(thread) + "/mem").c_str(), O_RDONLY | O_CLOEXEC);
  std::array<char, 256> bytes{};
  const ssize_t count = pread(memory, bytes.data(), bytes.size(), static_cast<off_t>(address));
  close(memory);
  const std::string_view read(bytes.data(), count < 0 ? 0 : static_cast<std::size_t>(count));
  return std::string(read.substr(0, read.find('\0')));
}

/// Where a link leads; "" when there is none.
std::string targetOf(const std::string& link) {
  std::array<char, PATH_MAX> bytes{};
  const ssize_t count = readlink(link.c_str(), bytes.data(), bytes.size());
  return {bytes.data(), count < 0 ? 0 : static_cast<std::size_t>(count)};
}

/// "/proc/4711/stat"; nothing where the path leads elsewhere.
CallSubject inProc(std::string_view path) {
  constexpr std::string_view kProc = "/proc/";
  if (!path.starts_with(kProc)) return {};
  path.remove_prefix(kProc.size());
  CallSubject subject;
  const auto [end, error] = std::from_chars(path.data(), path.data() + path.size(), subject.pid);
  path.remove_prefix(static_cast<std::size_t>(end - path.data()));
  if (error != std::errc() || (!path.empty() && path.front() != '/')) return {};
  if (!path.empty()) subject.file = path.substr(1);
  return subject;
}

CallSubject ofPidfd(const std::string& information) {
  std::ifstream lines(information);
  CallSubject subject{.file = "pidfd"};
  for (std::string word; lines >> word;) {
    if (word == "Pid:") lines >> subject.pid;
  }
  if (subject.pid < 0) subject.pid = 0;  // its process has gone
  return subject;
}

CallSubject ofOpenFile(pid_t thread, std::uint64_t fd) {
  const std::string number = std::to_string(static_cast<int>(fd));
  const std::string target = targetOf(folderOf(thread) + "/fd/" + number);
  // "anon_inode:[pidfd]", and since Linux 6.9 "pidfd:[123]".
  if (target.find("pidfd") != std::string::npos && target.front() != '/') {
    return ofPidfd(folderOf(thread) + "/fdinfo/" + number);
  }
  return inProc(target);
}

CallSubject ofPath(const CallGate::Call& call) {
  const std::string path = textAt(call.thread, call.arguments[1]);
  if (path.empty()) return ofOpenFile(call.thread, call.arguments[0]);
  if (path.front() == '/') return inProc(path);
  const std::string number = std::to_string(static_cast<int>(call.arguments[0]));
  return inProc(targetOf(folderOf(call.thread) + "/fd/" + number) + "/" + path);
}

}  // namespace

CallSubject subjectOf(const CallGate::Call& call) {
  switch (call.number) {
    case SYS_kill:
    case SYS_pidfd_open:
      return {.pid = static_cast<pid_t>(call.arguments[0])};
    case SYS_openat:
    case SYS_newfstatat:
    case SYS_statx:
    case SYS_readlinkat:
      return ofPath(call);
    default:
      return ofOpenFile(call.thread, call.arguments[0]);
  }
}

std::string described(const CallGate::Call& call, const CallSubject& subject) {
  return nameOfCall(call.number) + " of " + std::to_string(subject.pid) +
         (subject.file.empty() ? "" : "/" + subject.file);
}
