// What a real Mac answers: of this program, of a process of its own, and of launchd.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <csignal>
#include <vector>

#include "macos/machine/sleeper.h"
#include "platform/launch_agents.h"
#include "platform/memory.h"
#include "platform/processes.h"
#include "platform/signals.h"
#include "platform/users.h"
#include "tools/read_process.h"

namespace {

using testing::Contains;
using testing::Each;
using testing::ElementsAre;
using testing::Gt;
using testing::IsEmpty;

TEST(Machine, ListsItsProcesses) {
  const auto pids = platform::allPids();
  EXPECT_THAT(pids, Contains(getpid()));
  EXPECT_THAT(pids, Contains(1));
  EXPECT_THAT(pids, Each(Gt(0)));
  EXPECT_EQ(platform::ownPid(), getpid());
}

TEST(Machine, TellsOfAnOwnProcess) {
  const Sleeper sleeper;
  ASSERT_GT(sleeper.pid(), 0);
  platform::ProcessFacts facts;
  ASSERT_TRUE(readProcess(sleeper.pid(), facts));
  EXPECT_EQ(facts.name, "sleep");
  EXPECT_THAT(facts.arguments, ElementsAre("/bin/sleep", "600"));
  EXPECT_EQ(facts.commandLine, "/bin/sleep 600");
  EXPECT_EQ(facts.effectiveUid, geteuid());
}

TEST(Machine, TellsItsOwnFootprint) {
  constexpr std::size_t kSize = 64 << 20;
  const std::vector<char> touched(kSize, 'x');
  const auto footprint = platform::physicalFootprint(getpid());
  ASSERT_TRUE(footprint);
  EXPECT_GT(*footprint, touched.size());
}

TEST(Machine, TellsTheNameAndOwnerOfAnothersProcess) {
  if (getuid() == 0) GTEST_SKIP() << "root is refused nothing";
  platform::ProcessFacts facts;
  ASSERT_TRUE(readProcess(1, facts));
  EXPECT_EQ(facts.name, "launchd");
  EXPECT_EQ(facts.effectiveUid, 0);
  EXPECT_THAT(facts.arguments, IsEmpty());
  EXPECT_FALSE(platform::physicalFootprint(1));
}

TEST(Machine, QuitsAnOwnProcess) {
  Sleeper sleeper;
  const pid_t pid = sleeper.pid();
  ASSERT_GT(pid, 0);
  const auto identity = platform::processIdentity(pid);
  ASSERT_TRUE(identity);
  const platform::SignalTarget target(pid);
  EXPECT_EQ(target.effectiveUid(), geteuid());
  EXPECT_EQ(target.identity(), identity);
  EXPECT_EQ(target.send(platform::Signal::quit), 0);
  EXPECT_EQ(sleeper.reap(), SIGTERM);
  EXPECT_NE(platform::processIdentity(pid), identity);
}

TEST(Machine, ForceQuitsAnOwnProcessThatIsStopped) {
  Sleeper sleeper;
  ASSERT_GT(sleeper.pid(), 0);
  ASSERT_EQ(kill(sleeper.pid(), SIGSTOP), 0);
  EXPECT_EQ(platform::SignalTarget(sleeper.pid()).send(platform::Signal::forceQuit), 0);
  EXPECT_EQ(sleeper.reap(), SIGKILL);
}

TEST(Machine, MeasuresItsMemory) {
  constexpr double kGigabyte = 1 << 30;
  const auto reading = platform::readMemory();
  EXPECT_GE(reading.totalBytes, kGigabyte);
  ASSERT_TRUE(reading.inUse);
  EXPECT_GT(reading.inUse->usedBytes, 0);
  EXPECT_LE(reading.inUse->usedBytes, reading.totalBytes);
  EXPECT_GT(reading.inUse->freeBytes, 0);
  EXPECT_LE(reading.inUse->freeBytes, reading.totalBytes);
}

TEST(Machine, KnowsItsUsers) {
  EXPECT_EQ(platform::ownUid(), getuid());
  EXPECT_EQ(platform::loginName(0), "root");
}

// Whoever is logged in has launch agents of the system's own.
TEST(Machine, ListsItsLaunchAgents) {
  const auto* const answer = platform::loadedLaunchAgents({});
  ASSERT_TRUE(answer);
  EXPECT_FALSE(answer->loaded.empty());
  for (const auto& [label, pid] : answer->loaded) EXPECT_TRUE(!pid || *pid > 0) << label;
}

}  // namespace
