#include "tools/system_call_trace.h"

#include <re2/re2.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>

#include "tools/background_program.h"

namespace {

/// Each finds a call that needs more than the least power.
const RE2* forbidden(const std::string& call) {
  static const RE2 kPatterns[] = {
      {R"(^(creat|mkdir|mkdirat|rmdir|unlink|unlinkat|rename|renameat|renameat2)\()"},
      {R"(^(link|linkat|symlink|symlinkat|mknod|mknodat|truncate|fallocate)\()"},
      {R"(^(chmod|fchmod|fchmodat|chown|fchown|lchown|fchownat|setxattr|utimensat)\()"},
      {R"(^(mount|umount2|chroot|pivot_root|unshare|setns|bpf|perf_event_open)\()"},
      {R"(^(execve|execveat|fork|vfork|listen|accept|accept4)\()"},
      {R"(^(kill|tkill|tgkill|pidfd_send_signal|rt_sigqueueinfo|ptrace)\()"},
      {R"(^(process_vm_readv|process_vm_writev|pidfd_getfd|capset)\()"},
      {R"(^(setuid|setgid|setreuid|setregid|setresuid|setresgid|setgroups|setfsuid)\()"},
      {R"(^prctl\(PR_(CAP_AMBIENT|SET_KEEPCAPS|SET_SECUREBITS))"},
      {R"(^socket\(AF_(INET|INET6|PACKET|NETLINK|VSOCK))"},
      // Files of processes, found from the folder /proc.
      {R"(^readlink(at)?\(.*"(/proc/)?\d+/)"},
  };
  const auto found = std::find_if(std::begin(kPatterns), std::end(kPatterns),
                                  [&](const RE2& one) { return RE2::PartialMatch(call, one); });
  return found == std::end(kPatterns) ? nullptr : found;
}

bool isBeyondLeastPower(const std::string& call) {
  static const RE2 kOpen(R"re(^open(?:at|at2)?\((?:[^"]*)"([^"]*)".*)re");
  static const RE2 kWriting(R"(O_(WRONLY|RDWR|CREAT|TRUNC|APPEND|TMPFILE))");
  static const RE2 kWritable(R"(/dev/(tty|null|pts/\d+))");
  static const RE2 kOfAProcess(R"((/proc/)?\d+/.*)");
  static const RE2 kKnownLink(R"re(^readlinkat\(\d+, "\d+/((task/\d+/)?exe|cwd)")re");
  static const RE2 kQuestion(R"(^pidfd_send_signal\(\d+, 0, )");  // whether it still runs
  std::string path;
  if (RE2::FullMatch(call, kOpen, &path)) {
    if (RE2::PartialMatch(call, kWriting)) return !RE2::FullMatch(path, kWritable);
    return RE2::FullMatch(path, kOfAProcess) && call.find("O_NOFOLLOW") == std::string::npos;
  }
  // Qt makes sure of the session's folder in this way.
  if (RE2::FullMatch(call, R"(mkdir\(.*\) += -1 EEXIST .*)")) return false;
  if (call.starts_with("clone")) return call.find("CLONE_THREAD") == std::string::npos;
  if (RE2::PartialMatch(call, kKnownLink) || RE2::PartialMatch(call, kQuestion)) return false;
  return forbidden(call) != nullptr;
}

}  // namespace

SystemCallTrace::SystemCallTrace(const std::string& program) {
  const std::string trace = folder_ / "trace";
  folder_.write("traced",
                "#!/bin/sh\nexec strace -f -qq -s 256 -o " + trace + " " + program + "\n");
  std::filesystem::permissions(folder_ / "traced", std::filesystem::perms::owner_all);
}

std::string SystemCallTrace::reason() {
#ifdef INSTRUMENTED
  return "what counts lines, or checks memory, makes calls of its own";
#endif
  const int status = runProgram({"strace", "-qq", "-o", "/dev/null", "true"});
  return status == 0 ? "" : "strace is not installed, or may not trace";
}

std::vector<std::string> SystemCallTrace::calls() const {
  static const RE2 kThread(R"(^\d+ +)");
  std::vector<std::string> calls;
  std::ifstream trace(folder_ / "trace");
  for (std::string line; std::getline(trace, line);) {
    RE2::Replace(&line, kThread, "");
    calls.push_back(line);
  }
  return calls;
}

std::vector<std::string> SystemCallTrace::beyondLeastPower() const {
  const std::vector<std::string> all = calls();
  std::vector<std::string> found;
  // The first is the start of the program itself.
  for (std::size_t i = 1; i < all.size(); ++i) {
    if (isBeyondLeastPower(all[i])) found.push_back(all[i]);
  }
  return found;
}
