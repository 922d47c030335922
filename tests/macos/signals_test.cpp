#include "platform/signals.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cerrno>
#include <csignal>

#include "control/process_terminator.h"
#include "macos/mac_test.h"

namespace {

using darwin::kernel;
using platform::SignalTarget;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using Sent = darwin::SentSignal;

class Signals : public MacTest {};

TEST_F(Signals, QuitAndForceQuit) {
  kernel().processes = {{.pid = 5}, {.pid = 6}};
  EXPECT_EQ(SignalTarget(5).send(platform::Signal::quit), 0);
  EXPECT_EQ(SignalTarget(6).send(platform::Signal::forceQuit), 0);
  EXPECT_THAT(kernel().signals, ElementsAre(Sent{5, 15}, Sent{6, 9}));
}

TEST_F(Signals, FailureIsTheErrorNumber) {
  kernel().processes = {{.pid = 5, .killError = EPERM}};
  EXPECT_EQ(SignalTarget(5).send(platform::Signal::quit), EPERM);
  EXPECT_EQ(SignalTarget(6).send(platform::Signal::quit), ESRCH);
}

TEST_F(Signals, GroupsAreNeverSignalled) {
  kernel().processes = {{.pid = 0}, {.pid = -1}, {.pid = -5}};
  for (const std::int32_t pid : {0, -1, -5}) {
    EXPECT_EQ(SignalTarget(pid).send(platform::Signal::quit), EINVAL);
  }
  EXPECT_THAT(kernel().signals, IsEmpty());
}

TEST_F(Signals, OwnerIsTheRecordsEffectiveUser) {
  kernel().processes = {{.pid = 5, .effectiveUid = 502}};
  EXPECT_EQ(SignalTarget(5).effectiveUid(), 502);
}

// The query succeeds and fills nothing: its length is not looked at.
TEST_F(Signals, OwnerOfAPidThatNobodyHasIsRoot) {
  EXPECT_EQ(SignalTarget(5).effectiveUid(), 0);
}

TEST_F(Signals, RefusedQueryLeavesTheOwnerUnknown) {
  kernel().processes = {{.pid = 5}};
  kernel().refusesRecords = true;
  EXPECT_FALSE(SignalTarget(5).effectiveUid());
}

TEST_F(Signals, OwnProcessIsQuit) {
  kernel().processes = {{.pid = 5}};
  EXPECT_EQ(ProcessTerminator::terminate(5, false), std::pair(true, std::string("Quit PID 5")));
  EXPECT_THAT(kernel().signals, ElementsAre(Sent{5, 15}));
}

TEST_F(Signals, OthersProcessIsNotSignalled) {
  kernel().processes = {{.pid = 5, .effectiveUid = 502}, {.pid = 6, .effectiveUid = 999}};
  EXPECT_EQ(ProcessTerminator::terminate(5, true),
            std::pair(false, std::string("PID 5 is owned by grace, not your account. Vorda can "
                                         "only quit your own processes.")));
  EXPECT_THAT(ProcessTerminator::terminate(6, false).second, HasSubstr("owned by uid 999,"));
  EXPECT_THAT(kernel().signals, IsEmpty());
}

TEST_F(Signals, UnfilledRecordReadsAsRoots) {
  const auto [ok, message] = ProcessTerminator::terminate(5, false);
  EXPECT_FALSE(ok);
  EXPECT_EQ(message,
            "PID 5 runs as root, so macOS blocks Force Quit from a normal app.\n\nThis is common "
            "for Docker’s network helper (com.docker.vmnetd).\n\nWhat to do instead:\n• Quit "
            "Docker Desktop from its whale menu (menu bar), or\n• Open Docker Desktop → Quit "
            "Docker Desktop\n\nVorda cannot send root processes SIGKILL without an admin password "
            "prompt.");
  EXPECT_THAT(kernel().signals, IsEmpty());
}

TEST_F(Signals, RefusedQueryLeavesTheKernelToDecide) {
  kernel().refusesRecords = true;
  EXPECT_EQ(ProcessTerminator::terminate(5, false),
            std::pair(true, std::string("PID 5 already gone")));
  kernel().processes = {{.pid = 5, .effectiveUid = 0, .killError = EPERM}};
  EXPECT_EQ(ProcessTerminator::terminate(5, false).second,
            "macOS refused the signal (Operation not permitted).\n\nPID 5 is protected (root, "
            "system service, or SIP).\n\nFor Docker: quit Docker Desktop from the menu bar whale "
            "icon.\nFor system daemons: leave them alone — they are not ordinary apps.");
}

TEST_F(Signals, NextOwnerOfAPidIsSpared) {
  kernel().processes = {{.pid = 5, .startTime = 1'700'000'000'000'002}};
  EXPECT_EQ(ProcessTerminator::terminate(5, true, 1'700'000'000'000'001),
            std::pair(true, std::string("PID 5 already gone")));
  EXPECT_THAT(kernel().signals, IsEmpty());
}

}  // namespace
