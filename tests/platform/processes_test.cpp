// The processes of this machine: the test's own among them, the others only passed by.
#include "platform/processes.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/mount.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <string>

#include "platform/linux/process_reader.h"
#include "tools/child_process.h"
#include "tools/forked.h"
#include "tools/temp_folder.h"

namespace {

using platform::ProcessFacts;
using testing::ElementsAre;
using Arguments = std::vector<std::string>;

bool isListed(pid_t pid) {
  const auto pids = platform::allPids();
  return std::find(pids.begin(), pids.end(), pid) != pids.end();
}

/// A played process whose executable is called `name`.
class NamedProcess {
 public:
  NamedProcess(const std::string& name, std::vector<std::string> options, Arguments arguments)
      : process_(playProcess(with(std::move(options), "--exe", (folder_ / name).string()),
                             std::move(arguments))) {}
  pid_t pid() const { return process_.pid(); }

 private:
  static std::vector<std::string> with(std::vector<std::string> options, const char* option,
                                       const std::string& value) {
    options.insert(options.end(), {option, value});
    return options;
  }
  TempFolder folder_;
  ChildProcess process_;
};

TEST(AllPids, AreAscendingAndHoldTheTestsOwn) {
  const ChildProcess process(playProcess({}));
  const auto pids = platform::allPids();
  EXPECT_TRUE(std::is_sorted(pids.begin(), pids.end()));
  EXPECT_TRUE(std::all_of(pids.begin(), pids.end(), [](auto pid) { return pid > 0; }));
  EXPECT_TRUE(isListed(process.pid()));
  EXPECT_TRUE(isListed(platform::ownPid()));
  EXPECT_EQ(platform::ownPid(), getpid());
}

TEST(ReadProcess, TellsArgumentsNameAndOwner) {
  const ChildProcess process(playProcess({}, {"/opt/bin/python3", "-m", "mlx_lm.server", "", "é"}));
  ProcessFacts facts;
  ASSERT_TRUE(platform::readProcess(process.pid(), facts));
  EXPECT_EQ(facts.name, "python3");
  EXPECT_THAT(facts.arguments, ElementsAre("/opt/bin/python3", "-m", "mlx_lm.server", "é"));
  EXPECT_EQ(facts.commandLine, "/opt/bin/python3 -m mlx_lm.server é");
  EXPECT_EQ(facts.effectiveUid, geteuid());
}

TEST(ReadProcess, DropsArgumentsThatAreNotUtf8) {
  const ChildProcess process(playProcess({}, {"tool", "caf\xe9", "end"}));
  ProcessFacts facts;
  ASSERT_TRUE(platform::readProcess(process.pid(), facts));
  EXPECT_THAT(facts.arguments, ElementsAre("tool", "end"));
}

TEST(ReadProcess, ReadsArgumentsOfMoreThanTwoMebibytes) {
  constexpr std::size_t kLength = 120000;
  const ChildProcess process(playProcess({"--repeat", "20", std::string(kLength, 'x')}, {"tool"}));
  ProcessFacts facts;
  ASSERT_TRUE(platform::readProcess(process.pid(), facts));
  ASSERT_EQ(facts.arguments.size(), 21U);
  EXPECT_EQ(facts.arguments[20], std::string(kLength, 'x'));
  EXPECT_EQ(facts.commandLine.size(), 4 + 20 * (kLength + 1));
}

TEST(ReadProcess, ReadsAHundredThousandArguments) {
  const ChildProcess process(playProcess({"--repeat", "100000", "argument"}, {"tool"}));
  ProcessFacts facts;
  ASSERT_TRUE(platform::readProcess(process.pid(), facts));
  ASSERT_EQ(facts.arguments.size(), 100001U);
  EXPECT_EQ(facts.arguments.back(), "argument");
}

TEST(ReadProcess, KeepsATitleForPeopleWhole) {
  const NamedProcess nginx("nginx", {"--title", "nginx: worker process"},
                           {"nginx", "-g", "daemon off; master_process on;"});
  ProcessFacts facts;
  ASSERT_TRUE(platform::readProcess(nginx.pid(), facts));
  EXPECT_EQ(facts.name, "nginx: worker process");
  EXPECT_THAT(facts.arguments, ElementsAre("nginx: worker process"));
}

TEST(ReadProcess, CutsATitleOfTheProgram) {
  const NamedProcess nginx("nginx", {"--title", "nginx: master process ./nginx"},
                           {"nginx", "-g", "daemon off; master_process on;"});
  ProcessFacts facts;
  ASSERT_TRUE(platform::readProcess(nginx.pid(), facts));
  EXPECT_EQ(facts.name, "nginx");
  EXPECT_THAT(facts.arguments, ElementsAre("nginx:", "master", "process", "./nginx"));
}

TEST(ReadProcess, CutsATitlePaddedWithBlanks) {
  const NamedProcess tool("tool", {"--title", "tool --idle", "--pad", "blank"},
                          {"tool", "with", "many", "more", "arguments"});
  ProcessFacts facts;
  ASSERT_TRUE(platform::readProcess(tool.pid(), facts));
  EXPECT_THAT(facts.arguments, ElementsAre("tool", "--idle"));
}

TEST(ReadProcess, ReadsATitleLongerThanTheBlock) {
  const NamedProcess tool("tool", {"--title", "tool: a title that runs on into the environment"},
                          {"tool", "-x"});
  ProcessFacts facts;
  ASSERT_TRUE(platform::readProcess(tool.pid(), facts));
  EXPECT_EQ(facts.name, "tool: a title that runs on into the environment");
  EXPECT_EQ(facts.commandLine, "tool: a title that runs on into the environment");
}

TEST(ReadProcess, LeavesAPathWithBlanksWhole) {
  TempFolder folder;
  const std::string path = folder / "My App";
  const ChildProcess process(playProcess({"--exe", path}, {path}));
  ProcessFacts facts;
  ASSERT_TRUE(platform::readProcess(process.pid(), facts));
  EXPECT_EQ(facts.name, "My App");
  EXPECT_THAT(facts.arguments, ElementsAre(path));
}

TEST(ReadProcess, NamesTheExecutableEvenWhenItsFileIsGone) {
  TempFolder folder;
  const std::string path = folder / "tool";
  const ChildProcess process(playProcess({"--exe", path}, {"worker:", "x"}));
  std::filesystem::remove(path);
  ProcessFacts facts;
  ASSERT_TRUE(platform::readProcess(process.pid(), facts));
  EXPECT_EQ(facts.name, "tool");
}

TEST(ReadProcess, TellsTheOwnerOfAProcessThatMayNotBeDumped) {
  const bool isRoot = geteuid() == 0;
  const ChildProcess process(
      isRoot ? playProcess({"--user", std::to_string(kStranger), "--non-dumpable"})
             : playProcess({"--non-dumpable"}));
  ProcessFacts facts;
  ASSERT_TRUE(platform::readProcess(process.pid(), facts));
  EXPECT_EQ(facts.effectiveUid, isRoot ? kStranger : geteuid());
}

TEST(ReadProcess, HasNothingOfAZombieOrOfAProcessThatIsGone) {
  ChildProcess process(playProcess({}));
  const pid_t pid = process.pid();
  ProcessFacts facts;
  ASSERT_TRUE(platform::readProcess(pid, facts));
  kill(pid, SIGKILL);
  process.waitUntilZombie();
  EXPECT_FALSE(platform::readProcess(pid, facts));
  process.end();
  EXPECT_FALSE(platform::readProcess(pid, facts));
  EXPECT_FALSE(platform::physicalFootprint(pid));
  EXPECT_FALSE(platform::startIdentity(pid));
}

TEST(ReadProcess, PassesOverWhatHidepidHides) {
  if (geteuid() != 0) GTEST_SKIP() << "only root can mount a proc file system";
  const ChildProcess process(playProcess({}));
  const TempFolder folder;
  for (const char* hiding : {"hidepid=1", "hidepid=2"}) {
    const int result = resultOfForked([&] {
      if (!makeMountsPrivate() || mount("proc", folder.path().c_str(), "proc", 0, hiding) != 0) {
        return 99;
      }
      if (!becomeStranger()) return 98;
      const platform::ProcFs proc(folder.path().c_str());
      platform::ProcessReader reader(proc);
      ProcessFacts facts;
      return reader.read(process.pid(), facts) || reader.footprint(process.pid()) ? 1 : 0;
    });
    if (result == 99) GTEST_SKIP() << "no proc file system can be mounted here";
    EXPECT_EQ(result, 0) << hiding;
  }
}

TEST(PhysicalFootprint, IsTheMemoryThatAProcessKeepsBusy) {
  constexpr double kMiB = 1 << 20;
  constexpr double kBusy = 64 * kMiB;
  constexpr double kLot = 1 * kMiB;   // the kernel counts in lots of a few pages
  constexpr double kRest = 4 * kMiB;  // what a small program needs besides
  const ChildProcess process(playProcess({"--memory", "64"}));

  platform::allPids();
  const auto footprint = platform::physicalFootprint(process.pid());
  ASSERT_TRUE(footprint);
  EXPECT_GE(static_cast<double>(*footprint), kBusy - kLot);
  EXPECT_LE(static_cast<double>(*footprint), kBusy + kRest);

  // The way that also counts what is swapped out.
  platform::ProcessReader careful(platform::systemProc());
  const auto withSwap = careful.footprint(process.pid());
  ASSERT_TRUE(withSwap);
  EXPECT_GE(static_cast<double>(*withSwap), kBusy - kLot);
  EXPECT_LE(static_cast<double>(*withSwap), kBusy + kRest);
}

TEST(StartIdentity, StaysTheSame) {
  const ChildProcess process(playProcess({}, {"a ) b ("}));
  const auto identity = platform::startIdentity(process.pid());
  ASSERT_TRUE(identity);
  EXPECT_GT(*identity, 0U);
  EXPECT_EQ(platform::startIdentity(process.pid()), identity);
}

TEST(StartIdentity, IsTheStartTimeWhateverTheProcessIsCalled) {
  const NamedProcess odd("a) S 1 (b", {}, {});
  const auto before = platform::startIdentity(odd.pid());
  ASSERT_TRUE(before);
  // Time goes in ticks: a process that starts later has the same identity or a greater one.
  const ChildProcess later(playProcess({}));
  EXPECT_LE(*before, platform::startIdentity(later.pid()));
  EXPECT_GE(*before, platform::startIdentity(getpid()));
}

}  // namespace
