// Processes in states in which few are ever seen.
#include <sched.h>
#include <unistd.h>

#include <algorithm>
#include <fstream>
#include <memory>

#include "soak/control_group.h"
#include "soak/crowd.h"
#include "soak/storm.h"
#include "tools/child_process.h"
#include "tools/forked.h"

namespace {

class OddProcesses : public Storm {
 protected:
  /// The kernel's letter for what a process is doing.
  static char stateOf(pid_t pid) {
    std::ifstream stat("/proc/" + std::to_string(pid) + "/stat");
    std::string line;
    std::getline(stat, line);
    const auto end = line.rfind(") ");
    return end == std::string::npos || end + 2 >= line.size() ? '?' : line[end + 2];
  }
  static bool allAre(char state, const Pids& pids) {
    return std::all_of(pids.begin(), pids.end(),
                       [state](pid_t pid) { return stateOf(pid) == state; });
  }
  static void rideWith(const char* kind, char state) {
    const Crowd crowd({{kind, 20}});
    for (int i = 0; i < 1000 && !allAre(state, crowd.steady()); ++i) usleep(10'000);
    ASSERT_TRUE(allAre(state, crowd.steady()));
    LedProgram program;
    ride(program, crowd.steady());
    EXPECT_TRUE(allAre(state, crowd.steady())) << "looking at them changed what they do";
  }
};

TEST_F(OddProcesses, ThatAreStopped) {
  rideWith("stopped", 'T');
}

TEST_F(OddProcesses, ThatADebuggerHolds) {
  rideWith("traced", 't');
}

TEST_F(OddProcesses, InUninterruptibleSleep) {
  rideWith("sleeping", 'D');
}

TEST_F(OddProcesses, InTheCgroupFreezer) {
  ControlGroup group("freezer");
  if (!group.reason().empty()) GTEST_SKIP() << group.reason();
  const ChildProcess server(playProcess({}, {"llama-server", "--model", "/models/frozen.gguf"}));
  ASSERT_TRUE(group.add(server.pid()));
  ASSERT_TRUE(group.freeze());
  LedProgram program;
  ride(program, {server.pid()});
  EXPECT_TRUE(group.thaw());
}

TEST_F(OddProcesses, ThatHaveEnded) {
  const Crowd crowd({{"zombies", 500}, {"living", 100}});
  LedProgram program;
  ride(program, crowd.steady());
}

TEST_F(OddProcesses, OfOtherUserNamespaces) {
  const int works = resultOfForked([] { return unshare(CLONE_NEWUSER) == 0 ? 1 : 0; });
  if (works != 1) GTEST_SKIP() << "no user namespaces here";
  const Crowd crowd({{"foreign", 20}});
  LedProgram program;
  ride(program, crowd.steady());
}

TEST_F(OddProcesses, WithTwoMebibytesOfArguments) {
  std::vector<std::unique_ptr<ChildProcess>> processes;
  Pids pids;
  constexpr int kCount = 24;
  for (int i = 0; i < kCount; ++i) {
    processes.push_back(std::make_unique<ChildProcess>(
        playProcess({"--repeat", "20", std::string(105'000, 'x')},
                    {"llama-server", "--model", "/models/long-" + std::to_string(i) + ".gguf"})));
    pids.push_back(processes.back()->pid());
  }
  LedProgram program;
  constexpr long kFewLinesKiB = 16L << 10;  // what the allocator keeps depends on their order
  ride(program, pids, share(), kFewLinesKiB);
}

}  // namespace
