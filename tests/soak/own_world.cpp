#include "soak/own_world.h"

#include <sched.h>
#include <sys/mount.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstdio>
#include <fstream>
#include <string>

#include "tools/forked.h"

namespace {

/// Who is not root may make namespaces inside one of its own users, where it stays who it is.
bool mayMakeNamespaces() {
  const uid_t user = geteuid();
  const gid_t group = getegid();
  if (user == 0) return true;
  if (unshare(CLONE_NEWUSER) != 0) return false;
  const auto write = [](const char* file, const std::string& text) {
    std::ofstream target(file);
    return (target << text << std::flush).good();
  };
  const auto sameOnly = [](auto id) {
    return std::to_string(id) + " " + std::to_string(id) + " 1";
  };
  return write("/proc/self/setgroups", "deny") && write("/proc/self/uid_map", sameOnly(user)) &&
         write("/proc/self/gid_map", sameOnly(group));
}

// What processes end with that have no result of `work` to hand on.
constexpr int kNoNamespaces = 254;
constexpr int kCrashed = 255;  // so does one that exits with -1

/// Runs `work` as process 1 of a pid namespace.
int resultOfFirst(const std::function<int()>& work) {
  return resultOfForked([&] {
    if (!mayMakeNamespaces() || !makeMountsPrivate() || unshare(CLONE_NEWPID) != 0) {
      return kNoNamespaces;
    }
    return resultOfForked(
        [&] { return mount("proc", "/proc", "proc", 0, nullptr) == 0 ? work() : kNoNamespaces; });
  });
}

/// What process 1 has to do: it starts the other one, and reaps all that lose their parents.
int beFirst(const std::function<int()>& work) {
  const pid_t worker = fork();
  if (worker == 0) {
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    const int result = work();
    std::fflush(nullptr);
    _exit(result);
  }
  for (;;) {
    int status = 0;
    const pid_t ended = wait(&status);
    if (ended == worker) return WIFEXITED(status) ? WEXITSTATUS(status) : kCrashed;
    if (ended < 0) return kCrashed;
  }
}

}  // namespace

std::optional<int> resultInOwnPids(const std::function<int()>& work) {
  std::fflush(nullptr);  // what is still to be written is not copied
  const int result = resultOfFirst([&] { return beFirst(work); });
  if (result == kNoNamespaces) return std::nullopt;
  return result < 0 ? kCrashed : result;
}

int runInOwnWorld(const std::function<int()>& work) {
  if (const auto result = resultInOwnPids(work)) return *result;
  std::puts("No pid namespace can be made here: this machine's other processes take part.");
  return work();
}
