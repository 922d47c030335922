// System calls that fail: each in turn, each way it can.
#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <vector>

#include "soak/crowd.h"
#include "soak/fault_injector.h"
#include "soak/storm.h"
#include "tools/user_manager_rig.h"

namespace {

struct Way {
  const char* name;
  int error;
};

constexpr Way kWays[] = {{"EINTR", EINTR},
                         {"EIO", EIO},
                         {"ESRCH", ESRCH},
                         {"EACCES", EACCES},
                         {"EMFILE", EMFILE},
                         {"ENOMEM", ENOMEM},
                         {"nothing", FaultInjector::kNothing}};

class Faults : public Storm {
 protected:
  /// One refresh after the other, in each of which the next call fails, until one makes no
  /// more calls; and after each a refresh in which none fails.
  static void failEach(const Way& way, FaultInjector& injector, LedProgram& program,
                       const Pids& expected) {
    constexpr int kMost = 10'000;
    for (int number = 1; number < kMost; ++number) {
      injector.arm(number, way.error);
      const LedProgram::Answer answer = program.refresh();
      std::string call;
      if (!injector.disarm(&call)) {
        EXPECT_GT(number, 1) << "no call could fail";
        std::printf("  %s: %d calls\n", way.name, number - 1);
        return;
      }
      SCOPED_TRACE("call " + std::to_string(number) + ", " + call + ": " + way.name);
      ASSERT_TRUE(answer.isWhole) << "the program has ended, or hangs";
      const auto missing = std::count_if(expected.begin(), expected.end(),
                                         [&](pid_t pid) { return !answer.pids.contains(pid); });
      // What can't be read is one process, or the list of all of them.
      EXPECT_TRUE(missing <= 1 || answer.pids.empty()) << missing << " are missing";
      const bool isInterrupted = way.error == EINTR && (call == "read" || call == "pread64");
      EXPECT_TRUE(!isInterrupted || missing == 0) << "it could have read again";
      ASSERT_TRUE(refresh(program, expected)) << "it did not recover";
    }
    ADD_FAILURE() << "a refresh that never ends";
  }

  static void failEachWay(const Pids& expected) {
    FaultInjector injector;
    LedProgram program([&] { return injector.prepare(); });
    if (!injector.attach(program.pid())) GTEST_SKIP() << "this kernel hands no calls out";
    ASSERT_TRUE(refresh(program, expected));
    for (const Way& way : kWays) failEach(way, injector, program, expected);
  }
};

TEST_F(Faults, OfReadingProcesses) {
  const Crowd crowd({{"living", 30}});
  failEachWay(crowd.steady());
}

TEST_F(Faults, OfTalkingToTheServiceManager) {
  UserManagerRig rig;
  if (!rig.reason().empty()) GTEST_SKIP() << rig.reason();
  rig.addService("vorda-soak-gateway", "ExecStart=/bin/sleep 600\nRestart=always");
  const Crowd crowd({{"living", 10}});
  failEachWay(crowd.steady());
}

}  // namespace
