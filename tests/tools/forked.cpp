#include "tools/forked.h"

#include <grp.h>
#include <linux/sched.h>
#include <sched.h>
#include <sys/mount.h>
#include <sys/prctl.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstdint>

int resultOfForked(const std::function<int()>& work) {
  const pid_t child = fork();
  if (child < 0) return -1;
  if (child == 0) {
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    _exit(work());
  }
  int status = 0;
  if (waitpid(child, &status, 0) != child || !WIFEXITED(status)) return -1;
  return WEXITSTATUS(status);
}

pid_t forkAs(pid_t pid) {
  if (pid == 0) return fork();
  clone_args arguments{};
  arguments.exit_signal = SIGCHLD;
  arguments.set_tid = reinterpret_cast<std::uintptr_t>(&pid);
  arguments.set_tid_size = 1;
  return static_cast<pid_t>(syscall(SYS_clone3, &arguments, sizeof arguments));
}

bool becomeStranger() {
  return setgroups(0, nullptr) == 0 && setgid(kStranger) == 0 && setuid(kStranger) == 0;
}

bool makeMountsPrivate() {
  return unshare(CLONE_NEWNS) == 0 && mount("", "/", "", MS_REC | MS_PRIVATE, "") == 0;
}
