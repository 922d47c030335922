// A reader that keeps files open tells the same as one that opens them now.
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <unistd.h>

#include <memory>
#include <random>
#include <string>
#include <vector>

#include "platform/linux/idle_watch.h"
#include "platform/linux/process_reader.h"
#include "tools/child_process.h"
#include "tools/forked.h"
#include "tools/puppet.h"

namespace {

using platform::ProcessFacts;
using platform::ProcessReader;

/// A reader that has seen every process before, beside one that sees it for the first time.
class FreshReadTest : public testing::Test {
 protected:
  void expectAsFresh(pid_t pid) {
    ProcessReader fresh(platform::systemProc());
    fresh.pids();  // looks at swap
    ProcessFacts expected;
    const bool isThere = fresh.read(pid, expected);
    ASSERT_EQ(reader_.read(pid, facts_), isThere) << pid;
    if (!isThere) return;
    EXPECT_EQ(facts_.name, expected.name);
    EXPECT_EQ(facts_.commandLine, expected.commandLine);
    EXPECT_EQ(facts_.arguments, expected.arguments);
    EXPECT_EQ(facts_.effectiveUid, expected.effectiveUid);
    EXPECT_EQ(facts_.parent, expected.parent);
    EXPECT_EQ(facts_.startTime, expected.startTime);
    expectFreshFootprint(pid, fresh);
  }

  /// A process may still be busy with what it was told: then it is asked again.
  void expectFreshFootprint(pid_t pid, ProcessReader& fresh) {
    for (;;) {
      const auto before = fresh.footprint(pid);
      const auto kept = reader_.footprint(pid);
      if (fresh.footprint(pid) != before) continue;
      EXPECT_EQ(kept, before);
      return;
    }
  }

  ProcessReader reader_{platform::systemProc(), nullptr, platform::cpuTimeOfPid};
  ProcessFacts facts_;
};

TEST_F(FreshReadTest, SeesARewrittenTitle) {
  Puppet puppet;
  expectAsFresh(puppet.pid());
  for (const char* title : {"puppet: no 1", "puppet: no 2"}) {
    puppet.rewriteTitle();
    expectAsFresh(puppet.pid());
    EXPECT_EQ(facts_.commandLine, title);
  }
}

TEST_F(FreshReadTest, SeesMemoryGrow) {
  reader_.pids();
  Puppet puppet;
  expectAsFresh(puppet.pid());
  const auto before = reader_.footprint(puppet.pid());
  puppet.grow();
  expectAsFresh(puppet.pid());
  constexpr std::uint64_t kSomeMore = 7 << 20;  // the kernel counts in lots of a few pages
  EXPECT_GT(reader_.footprint(puppet.pid()), before.value_or(0) + kSomeMore);
}

TEST_F(FreshReadTest, SeesAnotherProgram) {
  Puppet puppet;
  expectAsFresh(puppet.pid());
  puppet.execute({"executed", "--with", "other arguments"});
  expectAsFresh(puppet.pid());
  EXPECT_EQ(facts_.commandLine, "executed --with other arguments");
}

TEST_F(FreshReadTest, SeesAnotherOwner) {
  if (geteuid() != 0) GTEST_SKIP() << "only root can change to another user";
  Puppet puppet;
  expectAsFresh(puppet.pid());
  puppet.changeOwner();
  expectAsFresh(puppet.pid());
  EXPECT_EQ(facts_.effectiveUid, kStranger);
}

TEST_F(FreshReadTest, SeesTheEnd) {
  Puppet puppet;
  const pid_t pid = puppet.pid();
  expectAsFresh(pid);
  puppet.die();
  expectAsFresh(pid);
  puppet.end();
  expectAsFresh(pid);
}

TEST_F(FreshReadTest, SeesTheNextOwnerOfThePid) {
  auto first = std::make_unique<Puppet>();
  const pid_t pid = first->pid();
  first->rewriteTitle();
  first->grow();
  expectAsFresh(pid);
  first.reset();
  Puppet second(pid);
  if (second.pid() != pid) GTEST_SKIP() << "may not choose a process's pid here";
  expectAsFresh(pid);
  EXPECT_NE(facts_.commandLine, "puppet: no 1");
  second.execute({"executed"});
  expectAsFresh(pid);
}

TEST_F(FreshReadTest, HoldsWhileProcessesComeAndGo) {
  std::mt19937 random(1);
  std::vector<std::unique_ptr<Puppet>> puppets;
  std::vector<pid_t> everSeen;
  for (int round = 0; round < 40; ++round) {
    for (int i = 0; i < 3; ++i) {
      puppets.push_back(std::make_unique<Puppet>());
      everSeen.push_back(puppets.back()->pid());
    }
    for (const auto& puppet : puppets) {
      if (puppet->obeys() && random() % 4 == 0) puppet->rewriteTitle();
    }
    Puppet& chosen = *puppets[random() % puppets.size()];
    if (chosen.obeys()) chosen.execute({"executed", "in", "a", "crowd"});
    if (round % 2 == 0) reader_.pids();
    for (const pid_t pid : everSeen) expectAsFresh(pid);
    std::erase_if(puppets, [&](const auto&) { return random() % 3 == 0; });
  }
}

/// Few descriptors: files are opened at each read again, as far as they have to be.
class FewDescriptors : public testing::TestWithParam<rlim_t> {};

TEST_P(FewDescriptors, AreEnough) {
  constexpr int kProcesses = 40;
  constexpr int kReads = 3;
  std::vector<std::unique_ptr<ChildProcess>> processes;
  processes.reserve(kProcesses);
  for (int i = 0; i < kProcesses; ++i) {
    processes.push_back(std::make_unique<ChildProcess>(
        playProcess({}, {"/opt/bin/python3", "-m", "module" + std::to_string(i)})));
  }
  EXPECT_EQ(resultOfForked([&processes] {
              rlimit limit = {};
              getrlimit(RLIMIT_NOFILE, &limit);
              limit.rlim_cur = GetParam();
              if (setrlimit(RLIMIT_NOFILE, &limit) != 0) return 255;
              ProcessReader reader(platform::systemProc());
              ProcessFacts facts;
              int missed = 0;
              for (int i = 0; i < kReads; ++i) {
                reader.pids();
                for (int p = 0; p < kProcesses; ++p) {
                  const pid_t pid = processes[static_cast<std::size_t>(p)]->pid();
                  const bool isRead = reader.read(pid, facts) && reader.footprint(pid) &&
                                      facts.arguments.back() == "module" + std::to_string(p);
                  if (!isRead) ++missed;
                }
              }
              return missed;
            }),
            0);
}

INSTANTIATE_TEST_SUITE_P(Limits, FewDescriptors, testing::Values(16, 65, 80, 256));

}  // namespace
