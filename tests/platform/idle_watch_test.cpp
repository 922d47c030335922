#include "platform/linux/idle_watch.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <optional>
#include <string>
#include <vector>

#include "tools/puppet.h"
#include "tools/temp_folder.h"

namespace {

using platform::IdleWatch;

std::optional<std::uint64_t> scriptedTime;
int timesAsked = 0;
std::optional<std::uint64_t> askScript(std::int32_t) {
  ++timesAsked;
  return scriptedTime;
}

/// What a watch says of one process whose CPU time is this at each scan; '.' where it wasn't asked.
std::string saidOf(const std::vector<std::optional<std::uint64_t>>& times, std::int32_t pid = 12) {
  IdleWatch watch;
  std::string said;
  for (const auto& time : times) {
    scriptedTime = time;
    const int before = timesAsked;
    const bool rested = watch.hasRested(pid, askScript);
    said += timesAsked == before ? '.' : rested ? 'r' : '-';
  }
  return said;
}

TEST(IdleWatch, TellsWhatHasNotRun) {
  EXPECT_EQ(saidOf({7}), "-") << "nothing is known of before";
  EXPECT_EQ(saidOf({7, 7, 7}), "-rr");
  EXPECT_EQ(saidOf({7, 7, 8, 8, 8}), "-r-.r") << "it may run again at once";
  EXPECT_EQ(saidOf({7, 8, 9, 9}), "--.-") << "when it ran, unasked, isn't known";
}

TEST(IdleWatch, AsksTheRestlessSeldom) {
  std::vector<std::optional<std::uint64_t>> times;
  for (std::uint64_t time = 0; time < 24; ++time) times.emplace_back(time);
  EXPECT_EQ(saidOf(times), "--.-...-.......-.......-");
}

TEST(IdleWatch, HasEveryProcessReadNowAndThen) {
  const std::vector<std::optional<std::uint64_t>> times(IdleWatch::kMostSkips * 2 + 4, 7);
  EXPECT_EQ(saidOf(times), "-rrrrrrrrrrrr-rrrrrrrrrrrr-r");
  EXPECT_EQ(saidOf(times, 15), "-rrrrrrrrr-rrrrrrrrrrrr-rrrr") << "another at another time";
}

TEST(IdleWatch, KnowsNothingOfWhatIsGone) {
  EXPECT_EQ(saidOf({7, std::nullopt, std::nullopt, 7, 7}), "----r");
}

TEST(IdleWatch, NoticesARunBeforeTheProcessIsUsed) {
  IdleWatch watch;
  scriptedTime = 7;
  watch.hasRested(1, askScript);
  ASSERT_TRUE(watch.hasRested(1, askScript));
  EXPECT_TRUE(watch.restsStill(1, askScript));
  scriptedTime = 8;
  EXPECT_FALSE(watch.restsStill(1, askScript));
}

TEST(IdleWatch, BeginsAnewWhenToldToForget) {
  IdleWatch watch;
  scriptedTime = 7;
  watch.hasRested(1, askScript);
  watch.forget();
  EXPECT_FALSE(watch.hasRested(1, askScript));
}

/// Its CPU time once that stands still; none when it never does.
std::optional<std::uint64_t> cpuTimeAtRest(pid_t pid) {
  constexpr int kMostLooks = 500;
  for (int i = 0; i < kMostLooks; ++i) {
    const auto before = platform::cpuTimeOfPid(pid);
    usleep(20'000);
    if (platform::cpuTimeOfPid(pid) == before) return before;
  }
  return std::nullopt;
}

TEST(CpuTimeOfPid, StandsStillUntilTheProcessRuns) {
  if (!platform::isCpuTimeOfPidExact()) GTEST_SKIP() << "this kernel counts in ticks";
  Puppet puppet;
  const auto atRest = cpuTimeAtRest(puppet.pid());
  ASSERT_TRUE(atRest);
  puppet.rewriteTitle();
  EXPECT_GT(cpuTimeAtRest(puppet.pid()), atRest);
}

TEST(CpuTimeOfPid, IsNotKnownOfWhatIsGone) {
  pid_t pid = 0;
  {
    const Puppet puppet;
    pid = puppet.pid();
  }
  EXPECT_FALSE(platform::cpuTimeOfPid(pid));
}

TEST(CpuTimeOfPid, IsNotReliedOnWhereProcTellsOfOtherPids) {
  TempFolder proc;
  EXPECT_FALSE(platform::isCpuTimeOfPidExact(proc.path().c_str()));
  proc.link("self", "1");
  EXPECT_EQ(platform::isCpuTimeOfPidExact(proc.path().c_str()), getpid() == 1);
}

}  // namespace
