// Signals, to processes of the test's own only.
#include "platform/signals.h"

#include <gtest/gtest.h>
#include <linux/filter.h>
#include <linux/seccomp.h>
#include <sys/prctl.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <climits>
#include <csignal>

#include "platform/processes.h"
#include "tools/child_process.h"
#include "tools/forked.h"
#include "tools/puppet.h"

namespace {

using platform::Signal;
using platform::SignalTarget;

int signalThatEnded(ChildProcess& process) {
  const auto status = process.wait();
  return status && WIFSIGNALED(*status) ? WTERMSIG(*status) : 0;
}

TEST(SignalTargetTest, QuitAsksTheProcessToEnd) {
  ChildProcess process(playProcess({}));
  EXPECT_EQ(SignalTarget(process.pid()).send(Signal::quit), 0);
  EXPECT_EQ(signalThatEnded(process), SIGTERM);
}

TEST(SignalTargetTest, ForceQuitEndsAlsoWhatIgnoresQuit) {
  ChildProcess process(playProcess({"--ignore-term"}));
  const SignalTarget target(process.pid());
  EXPECT_EQ(target.send(Signal::quit), 0);
  EXPECT_EQ(target.send(Signal::forceQuit), 0);
  EXPECT_EQ(signalThatEnded(process), SIGKILL);
}

TEST(SignalTargetTest, NoProcessGroupIsEverSignalled) {
  for (const std::int32_t pid : {0, -1, -2, INT_MIN}) {
    const SignalTarget target(pid);
    EXPECT_EQ(target.send(Signal::quit), EINVAL) << pid;
    EXPECT_FALSE(target.effectiveUid()) << pid;
    EXPECT_FALSE(target.identity()) << pid;
  }
}

TEST(SignalTargetTest, AProcessThatWasGoneBeforeStaysGone) {
  ChildProcess process(playProcess({}));
  const pid_t pid = process.pid();
  process.end();
  const SignalTarget target(pid);
  EXPECT_FALSE(target.effectiveUid());
  EXPECT_FALSE(target.identity());
  EXPECT_EQ(target.send(Signal::quit), ESRCH);
}

TEST(SignalTargetTest, AProcessThatEndsMeanwhileIsGone) {
  ChildProcess process(playProcess({}));
  const SignalTarget target(process.pid());
  EXPECT_TRUE(target.identity());
  process.end();
  EXPECT_FALSE(target.effectiveUid());
  EXPECT_FALSE(target.identity());
  EXPECT_EQ(target.send(Signal::forceQuit), ESRCH);
}

TEST(SignalTargetTest, IdentityIsTheOneThatWasRead) {
  const ChildProcess process(playProcess({}));
  const SignalTarget target(process.pid());
  EXPECT_TRUE(target.identity());
  EXPECT_EQ(target.identity(), platform::processIdentity(process.pid()));
}

TEST(SignalTargetTest, TheNextProcessWithThatPidIsLeftAlone) {
  ChildProcess process(playProcess({}));
  const pid_t pid = process.pid();
  const SignalTarget target(pid);
  process.end();
  const Puppet next(pid);
  if (next.pid() != pid) GTEST_SKIP() << "pids can't be chosen here";

  EXPECT_FALSE(target.effectiveUid());
  EXPECT_FALSE(target.identity());
  EXPECT_EQ(target.send(Signal::forceQuit), ESRCH);
  EXPECT_EQ(waitpid(pid, nullptr, WNOHANG), 0) << "it lives";
}

TEST(SignalTargetTest, TellsAForeignOwnerAlsoOfAProcessThatMayNotBeDumped) {
  if (geteuid() != 0) GTEST_SKIP() << "only root can start a process of another user";
  const ChildProcess process(playProcess({"--user", std::to_string(kStranger), "--non-dumpable"}));
  EXPECT_EQ(SignalTarget(process.pid()).effectiveUid(), kStranger);
}

TEST(SignalTargetTest, TheKernelRefusesAnotherUsersProcess) {
  if (geteuid() != 0) GTEST_SKIP() << "only root can become another user";
  const ChildProcess process(playProcess({}));
  const int result = resultOfForked([&] {
    if (!becomeStranger()) return 99;
    const SignalTarget target(process.pid());
    if (target.effectiveUid() != 0U) return 1;
    if (!target.identity()) return 2;
    return target.send(Signal::quit) == EPERM ? 0 : 3;
  });
  EXPECT_EQ(result, 0);
}

/// From here on this process has no pidfds, as on a kernel before 5.3.
bool forbidPidfds() {
  sock_filter filter[] = {
      BPF_STMT(BPF_LD | BPF_W | BPF_ABS, offsetof(seccomp_data, nr)),
      BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, SYS_pidfd_open, 0, 1),
      BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ERRNO | ENOSYS),
      BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ALLOW),
  };
  const sock_fprog program{sizeof filter / sizeof *filter, filter};
  return prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) == 0 &&
         prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &program) == 0;
}

TEST(SignalTargetTest, DoesWithoutPidfds) {
  ChildProcess process(playProcess({}));
  const int result = resultOfForked([&] {
    if (!forbidPidfds()) return 99;
    if (syscall(SYS_pidfd_open, getpid(), 0U) != -1 || errno != ENOSYS) return 98;
    const SignalTarget target(process.pid());
    // The identity is not asked: this program has asked the kernel for pidfds before, and a
    // real one does not lose them while it runs.
    if (target.effectiveUid() != geteuid()) return 1;
    if (target.send(Signal::quit) != 0) return 2;
    return SignalTarget(INT_MAX).send(Signal::quit) == ESRCH ? 0 : 3;
  });
  if (result == 99) GTEST_SKIP() << "no system call can be forbidden here";
  EXPECT_EQ(result, 0);
  EXPECT_EQ(signalThatEnded(process), SIGTERM);
}

}  // namespace
