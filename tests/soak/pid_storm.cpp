// Pids that wrap around and are given anew, in a pid namespace of the test's own.
#include <sys/utsname.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <fstream>

#include "soak/crowd.h"
#include "soak/own_world.h"
#include "soak/storm.h"
#include "tools/child_process.h"

namespace {

class Pids : public Storm {
 protected:
  void SetUp() override {
    if (geteuid() != 0) GTEST_SKIP() << "only root can make a pid namespace";
  }

  /// Runs `work` in a pid namespace of its own. What it expects in vain is a failure of the
  /// test.
  static void inNamespace(const std::function<void()>& work) {
    const auto result = resultInOwnPids([&] {
      work();
      return HasFailure() ? 1 : 0;
    });
    if (!result) GTEST_SKIP() << "no pid namespace can be made here";
    EXPECT_EQ(*result, 0) << "what went wrong stands above";
  }

  static bool write(const char* file, int value) {
    std::ofstream target(file);
    target << value << std::flush;
    return target.good();
  }
  static int numberIn(const char* file) {
    int value = 0;
    std::ifstream(file) >> value;
    return value;
  }
  static constexpr const char* kLastPid = "/proc/sys/kernel/ns_last_pid";
  static constexpr const char* kPidMax = "/proc/sys/kernel/pid_max";

  /// Each pid namespace has a greatest pid of its own since Linux 6.14; before, it is the
  /// whole machine's, and not ours to change.
  static bool hasOwnPidMax() {
    utsname system = {};
    int major = 0;
    int minor = 0;
    return uname(&system) == 0 && std::sscanf(system.release, "%d.%d", &major, &minor) == 2 &&
           (major > 6 || (major == 6 && minor >= 14));
  }
};

TEST_F(Pids, ThatWrapAround) {
  inNamespace([] {
    EXPECT_TRUE(!hasOwnPidMax() || write(kPidMax, 1000));
    const Crowd crowd({{"living", 100}, {"births", 500}});
    LedProgram program;
    constexpr int kParts = 5;
    for (int i = 0; i < kParts; ++i) {
      // An older kernel gets there sooner when it is told where it is.
      EXPECT_TRUE(hasOwnPidMax() || write(kLastPid, numberIn(kPidMax) - 100));
      ride(program, crowd.steady(), share() / kParts);
    }
  });
}

/// The entry stands in an open menu while its process ends and another is given the pid.
TEST_F(Pids, ThatAreGivenAnew) {
  inNamespace([] {
    LedProgram program;
    for (int i = 0; i < 5; ++i) {
      pid_t pid = 0;
      {
        const ChildProcess chosen(playProcess({}, {"llama-server", "-m", "/models/first.gguf"}));
        pid = chosen.pid();
        ASSERT_TRUE(program.refresh().pids.contains(pid));
        program.keepQuitOf(pid);
      }
      usleep(20'000);  // the kernel counts starts in hundredths of a second
      ASSERT_TRUE(write(kLastPid, pid - 1));
      ChildProcess innocent(playProcess({}, {"llama-server", "-m", "/models/second.gguf"}));
      ASSERT_EQ(innocent.pid(), pid);

      program.quitKept();
      EXPECT_EQ(waitpid(pid, nullptr, WNOHANG), 0) << "it was signalled";
      EXPECT_TRUE(program.refresh().pids.contains(pid)) << "it is in the list";

      // The same again, with nobody in between: the one that is meant ends.
      program.keepQuitOf(pid);
      program.quitKept();
      EXPECT_TRUE(innocent.wait());
    }
  });
}

}  // namespace
