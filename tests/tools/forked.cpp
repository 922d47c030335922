#include "tools/forked.h"

#include <grp.h>
#include <sched.h>
#include <sys/mount.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>

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

bool becomeStranger() {
  return setgroups(0, nullptr) == 0 && setgid(kStranger) == 0 && setuid(kStranger) == 0;
}

bool makeMountsPrivate() {
  return unshare(CLONE_NEWNS) == 0 && mount("", "/", "", MS_REC | MS_PRIVATE, "") == 0;
}
