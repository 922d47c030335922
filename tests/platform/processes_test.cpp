// The processes of this machine: the test's own among them, the others only passed by.
#include "platform/processes.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/mount.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <functional>
#include <memory>
#include <string>

#include "platform/linux/process_reader.h"
#include "tools/child_process.h"
#include "tools/forked.h"
#include "tools/puppet.h"
#include "tools/read_process.h"
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
  ASSERT_TRUE(readProcess(process.pid(), facts));
  EXPECT_EQ(facts.name, "python3");
  EXPECT_THAT(facts.arguments, ElementsAre("/opt/bin/python3", "-m", "mlx_lm.server", "é"));
  EXPECT_EQ(facts.commandLine, "/opt/bin/python3 -m mlx_lm.server é");
  EXPECT_EQ(facts.effectiveUid, geteuid());
}

TEST(ReadProcess, DropsArgumentsThatAreNotUtf8) {
  const ChildProcess process(playProcess({}, {"tool", "caf\xe9", "end"}));
  ProcessFacts facts;
  ASSERT_TRUE(readProcess(process.pid(), facts));
  EXPECT_THAT(facts.arguments, ElementsAre("tool", "end"));
}

TEST(ReadProcess, ReadsWhatFitsOfMoreThanTwoMebibytes) {
  constexpr std::size_t kLength = 60'000;
  const ChildProcess process(playProcess({"--repeat", "40", std::string(kLength, 'x')}, {"tool"}));
  ProcessFacts facts;
  ASSERT_TRUE(readProcess(process.pid(), facts));
  EXPECT_THAT(facts.arguments, ElementsAre("tool", std::string(kLength, 'x')));
  EXPECT_TRUE(facts.isCut);
}

TEST(ReadProcess, ReadsWhatFitsOfAHundredThousandArguments) {
  const ChildProcess process(playProcess({"--repeat", "100000", "argument"}, {"tool"}));
  ProcessFacts facts;
  ASSERT_TRUE(readProcess(process.pid(), facts));
  EXPECT_EQ(facts.arguments.size(), 1 + (platform::kLongestCommandLine - 5) / 9);
  EXPECT_EQ(facts.arguments.back(), "argument");
  EXPECT_TRUE(facts.isCut);
}

TEST(ReadProcess, KeepsATitleForPeopleWhole) {
  const NamedProcess nginx("nginx", {"--title", "nginx: worker process"},
                           {"nginx", "-g", "daemon off; master_process on;"});
  ProcessFacts facts;
  ASSERT_TRUE(readProcess(nginx.pid(), facts));
  EXPECT_EQ(facts.name, "nginx: worker process");
  EXPECT_THAT(facts.arguments, ElementsAre("nginx: worker process"));
}

TEST(ReadProcess, CutsATitleOfTheProgram) {
  const NamedProcess nginx("nginx", {"--title", "nginx: master process ./nginx"},
                           {"nginx", "-g", "daemon off; master_process on;"});
  ProcessFacts facts;
  ASSERT_TRUE(readProcess(nginx.pid(), facts));
  EXPECT_EQ(facts.name, "nginx");
  EXPECT_THAT(facts.arguments, ElementsAre("nginx:", "master", "process", "./nginx"));
}

TEST(ReadProcess, CutsATitlePaddedWithBlanks) {
  const NamedProcess tool("tool", {"--title", "tool --idle", "--pad", "blank"},
                          {"tool", "with", "many", "more", "arguments"});
  ProcessFacts facts;
  ASSERT_TRUE(readProcess(tool.pid(), facts));
  EXPECT_THAT(facts.arguments, ElementsAre("tool", "--idle"));
}

TEST(ReadProcess, ReadsATitleLongerThanTheBlock) {
  const NamedProcess tool("tool", {"--title", "tool: a title that runs on into the environment"},
                          {"tool", "-x"});
  ProcessFacts facts;
  ASSERT_TRUE(readProcess(tool.pid(), facts));
  EXPECT_EQ(facts.name, "tool: a title that runs on into the environment");
  EXPECT_EQ(facts.commandLine, "tool: a title that runs on into the environment");
}

TEST(ReadProcess, LeavesAPathWithBlanksWhole) {
  TempFolder folder;
  const std::string path = folder / "My App";
  const ChildProcess process(playProcess({"--exe", path}, {path}));
  ProcessFacts facts;
  ASSERT_TRUE(readProcess(process.pid(), facts));
  EXPECT_EQ(facts.name, "My App");
  EXPECT_THAT(facts.arguments, ElementsAre(path));
}

TEST(ReadProcess, NamesTheExecutableEvenWhenItsFileIsGone) {
  TempFolder folder;
  const std::string path = folder / "tool";
  const ChildProcess process(playProcess({"--exe", path}, {"worker:", "x"}));
  std::filesystem::remove(path);
  ProcessFacts facts;
  ASSERT_TRUE(readProcess(process.pid(), facts));
  EXPECT_EQ(facts.name, "tool");
}

TEST(ReadProcess, TellsTheOwnerOfAProcessThatMayNotBeDumped) {
  const bool isRoot = geteuid() == 0;
  const ChildProcess process(
      isRoot ? playProcess({"--user", std::to_string(kStranger), "--non-dumpable"})
             : playProcess({"--non-dumpable"}));
  ProcessFacts facts;
  ASSERT_TRUE(readProcess(process.pid(), facts));
  EXPECT_EQ(facts.effectiveUid, isRoot ? kStranger : geteuid());
}

TEST(ReadProcess, HasNothingOfAZombieOrOfAProcessThatIsGone) {
  ChildProcess process(playProcess({}));
  const pid_t pid = process.pid();
  ProcessFacts facts;
  ASSERT_TRUE(readProcess(pid, facts));
  kill(pid, SIGKILL);
  process.waitUntilZombie();
  EXPECT_FALSE(readProcess(pid, facts));
  process.end();
  EXPECT_FALSE(readProcess(pid, facts));
  EXPECT_FALSE(platform::physicalFootprint(pid));
  EXPECT_FALSE(platform::processIdentity(pid));
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

TEST(ReadProcess, TellsParentAndStart) {
  const std::uint64_t before = platform::processClock();
  const NamedProcess odd("a) S 1 (b", {}, {});
  const std::uint64_t after = platform::processClock();
  ProcessFacts facts;
  ASSERT_TRUE(readProcess(odd.pid(), facts));
  EXPECT_EQ(facts.parent, getpid());
  // In a container the session's leader may be outside, where it has no number.
  const pid_t session = getsid(0);
  EXPECT_EQ(facts.session, session == 0 ? std::nullopt : std::optional(session));
  constexpr std::uint64_t kTick = 10'000'000;  // nanoseconds
  ASSERT_TRUE(facts.startTime);
  EXPECT_GE(*facts.startTime, before);
  EXPECT_LE(*facts.startTime, after + kTick);
}

TEST(ReadProcess, TellsASessionOfItsOwn) {
  const ChildProcess leader(playProcess({"--own-session"}, {"vllm", "serve"}));
  ProcessFacts facts;
  ASSERT_TRUE(readProcess(leader.pid(), facts));
  EXPECT_EQ(facts.session, leader.pid());
}

TEST(ReadProcess, TellsOfAProcessWhoseFirstThreadHasEnded) {
  const ChildProcess process(
      playProcess({"--memory", "64", "--end-first-thread"}, {"vllm", "serve"}));
  ProcessFacts facts;
  ASSERT_TRUE(readProcess(process.pid(), facts));
  EXPECT_EQ(facts.commandLine, "vllm serve");
  constexpr std::uint64_t kBusy = 63 << 20;
  EXPECT_GE(platform::physicalFootprint(process.pid()).value_or(0), kBusy);
  EXPECT_TRUE(platform::confirmProcess(process.pid(), facts));
  EXPECT_TRUE(facts.identity);
}

/// Which process a pid means, told by the way of this kernel and by the way of older ones.
class ProcessIdentity : public testing::TestWithParam<bool> {
 protected:
  /// Reads the process, and what a row shows of it; `meanwhile` happens in between. Whether
  /// that is to be believed.
  bool read(
      pid_t pid, const std::function<void()>& meanwhile = [] {}) {
    if (!reader().read(pid, facts_)) return false;
    meanwhile();
    reader().footprint(pid);
    return reader().confirm(pid, facts_);
  }
  std::optional<std::uint64_t> identity(pid_t pid) {
    return read(pid) ? facts_.identity : std::nullopt;
  }
  platform::ProcessReader& reader() { return GetParam() ? platform::processReader() : older_; }

  platform::ProcessReader older_{platform::systemProc()};
  ProcessFacts facts_;
};

TEST_P(ProcessIdentity, StaysTheSameWhateverTheProcessBecomes) {
  Puppet puppet;
  const auto first = identity(puppet.pid());
  ASSERT_TRUE(first);
  puppet.rewriteTitle();
  EXPECT_EQ(identity(puppet.pid()), first);
  puppet.execute({"executed"});
  EXPECT_EQ(identity(puppet.pid()), first);
  EXPECT_EQ(facts_.commandLine, "executed");
}

TEST_P(ProcessIdentity, IsAnotherForTheNextOwnerOfThePid) {
  auto first = std::make_unique<Puppet>();
  const pid_t pid = first->pid();
  const auto before = identity(pid);
  first.reset();
  EXPECT_FALSE(identity(pid));
  Puppet second(pid);
  if (second.pid() != pid) GTEST_SKIP() << "may not choose a process's pid here";
  second.execute({"executed"});  // may well be within the same tick
  const auto after = identity(pid);
  ASSERT_TRUE(before && after);
  EXPECT_NE(*before, *after);
}

TEST_P(ProcessIdentity, NothingIsBelievedOfAProcessThatEndsWhileItIsRead) {
  for (const bool isSeenBefore : {false, true}) {
    ChildProcess process(playProcess({}));
    EXPECT_TRUE(!isSeenBefore || read(process.pid()));
    EXPECT_FALSE(read(process.pid(), [&] { process.end(); })) << isSeenBefore;
    EXPECT_FALSE(facts_.identity);
  }
}

TEST_P(ProcessIdentity, NothingIsBelievedOfAPidThatIsGivenAnewWhileItIsRead) {
  for (const bool isSeenBefore : {false, true}) {
    auto first = std::make_unique<Puppet>();
    const pid_t pid = first->pid();
    EXPECT_TRUE(!isSeenBefore || read(pid));
    std::unique_ptr<Puppet> second;
    const bool isBelieved = read(pid, [&] {
      first.reset();
      second = std::make_unique<Puppet>(pid);
    });
    if (second->pid() != pid) GTEST_SKIP() << "may not choose a process's pid here";
    EXPECT_FALSE(isBelieved) << isSeenBefore;
    EXPECT_FALSE(facts_.identity);
    EXPECT_TRUE(read(pid)) << "the next refresh has the new one";
  }
}

TEST_P(ProcessIdentity, IsUnknownWhereNothingVouchesForIt) {
  const ChildProcess process(playProcess({}));
  EXPECT_EQ(resultOfForked([&] {
              platform::ProcessReader& reader = this->reader();
              rlimit none = {};
              if (setrlimit(RLIMIT_NOFILE, &none) != 0) return 9;
              if (!reader.read(process.pid(), facts_)) return 1;  // the executable tells its name
              if (!reader.confirm(process.pid(), facts_)) return 2;
              return facts_.identity ? 3 : 0;
            }),
            0);
}

INSTANTIATE_TEST_SUITE_P(Table, ProcessIdentity, testing::Values(true, false),
                         [](const auto& way) { return way.param ? "Inodes" : "StartTimes"; });

TEST(ProcessIdentityAlone, IsTheOneThatWasConfirmed) {
  const ChildProcess process(playProcess({}));
  ProcessFacts facts;
  ASSERT_TRUE(readProcess(process.pid(), facts));
  EXPECT_FALSE(facts.identity);
  ASSERT_TRUE(platform::confirmProcess(process.pid(), facts));
  ASSERT_TRUE(facts.identity);
  EXPECT_EQ(platform::processIdentity(process.pid()), facts.identity);
}

TEST(ProcessStateOfAProcess, FollowsIt) {
  ChildProcess process(playProcess({}));
  const pid_t pid = process.pid();
  using platform::ProcessState;
  siginfo_t news{};
  EXPECT_EQ(platform::processState(pid), ProcessState::runs);
  kill(pid, SIGSTOP);
  ASSERT_EQ(waitid(P_PID, static_cast<id_t>(pid), &news, WSTOPPED), 0);
  EXPECT_EQ(platform::processState(pid), ProcessState::stopped);
  kill(pid, SIGCONT);
  ASSERT_EQ(waitid(P_PID, static_cast<id_t>(pid), &news, WCONTINUED), 0);
  EXPECT_EQ(platform::processState(pid), ProcessState::runs);
  kill(pid, SIGKILL);
  process.waitUntilZombie();
  EXPECT_EQ(platform::processState(pid), ProcessState::ended);
  process.end();
  EXPECT_EQ(platform::processState(pid), std::nullopt);
}

}  // namespace
