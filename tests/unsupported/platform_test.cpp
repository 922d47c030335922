#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cerrno>

#include "control/process_terminator.h"
#include "platform/gpus.h"
#include "platform/launch_agents.h"
#include "platform/memory.h"
#include "platform/processes.h"
#include "platform/signals.h"
#include "platform/users.h"
#include "scanner/process_scanner.h"
#include "scanner/system_memory.h"

namespace {

using testing::IsEmpty;

TEST(UnsupportedPlatform, KnowsNoProcess) {
  EXPECT_THAT(platform::allPids(), IsEmpty());
  platform::ProcessFacts facts;
  EXPECT_FALSE(platform::lookAtProcess(1, facts));
  EXPECT_FALSE(platform::readCommandLine(facts));
  EXPECT_EQ(platform::physicalFootprint(1), std::nullopt);
  EXPECT_EQ(platform::processIdentity(1), std::nullopt);
  EXPECT_EQ(platform::processState(1), std::nullopt);
  EXPECT_LT(platform::ownPid(), 1);
  EXPECT_THAT(ProcessScanner::scan(0), IsEmpty());
}

TEST(UnsupportedPlatform, KnowsNoMemory) {
  const platform::MemoryReading reading = platform::readMemory();
  EXPECT_EQ(reading.totalBytes, 0);
  EXPECT_FALSE(reading.inUse);
  EXPECT_EQ(SystemMemory::snapshot().totalGB, 0);
}

TEST(UnsupportedPlatform, KnowsNoCard) {
  platform::awaitGpus();
  EXPECT_THAT(platform::readGpus({.isWatched = true}).devices, IsEmpty());
  EXPECT_THAT(platform::readGpus({}).uses, IsEmpty());
}

TEST(UnsupportedPlatform, KnowsNoLaunchAgent) {
  EXPECT_THAT(platform::launchAgentFiles(), IsEmpty());
  EXPECT_FALSE(platform::loadedLaunchAgents({}));
  EXPECT_THAT(platform::stopAttempts("a", "/a"), IsEmpty());
  EXPECT_THAT(platform::startAttempts("a", "/a"), IsEmpty());
}

TEST(UnsupportedPlatform, TakesNobodyForRoot) {
  EXPECT_NE(platform::ownUid(), 0U);
  EXPECT_EQ(platform::loginName(0), std::nullopt);
}

TEST(UnsupportedPlatform, SignalsNothing) {
  EXPECT_EQ(platform::SignalTarget(1).send(platform::Signal::quit), ENOSYS);
  EXPECT_EQ(platform::SignalTarget(0).send(platform::Signal::quit), EINVAL);
  EXPECT_EQ(platform::SignalTarget(1).effectiveUid(), std::nullopt);
  EXPECT_EQ(platform::SignalTarget(1).identity(), std::nullopt);
}

TEST(UnsupportedPlatform, SaysThatItCannotSignal) {
  const auto [done, words] = ProcessTerminator::terminate(4711, true);
  EXPECT_FALSE(done);
  EXPECT_EQ(words, "Failed PID 4711: Function not implemented");
}

}  // namespace
