// Too little memory, and too few open files.
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>
#include <cstring>
#include <fstream>

#include "soak/control_group.h"
#include "soak/crowd.h"
#include "soak/storm.h"

namespace {

/// A process that takes more and more memory until the kernel ends it, again and again.
class Hog {
 public:
  explicit Hog(const ControlGroup& group) : pid_(fork()) {
    if (pid_ == 0) eatForEver(group);
  }
  ~Hog() {
    kill(pid_, SIGTERM);  // the meal ends with it
    waitpid(pid_, nullptr, 0);
  }
  Hog(const Hog&) = delete;
  Hog& operator=(const Hog&) = delete;

 private:
  [[noreturn]] static void eatForEver(const ControlGroup& group) {
    prctl(PR_SET_PDEATHSIG, SIGTERM);
    signal(SIGTERM, [](int) { kill(0, SIGKILL); });
    setpgid(0, 0);
    for (;;) {
      const pid_t meal = fork();
      if (meal == 0) eat(group);
      waitpid(meal, nullptr, 0);
      usleep(10'000);
    }
  }
  [[noreturn]] static void eat(const ControlGroup& group) {
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    std::ofstream("/proc/self/oom_score_adj") << 1000;
    if (!group.add(getpid())) _exit(1);
    constexpr std::size_t kBite = 1 << 20;
    for (;;) {
      std::memset(std::malloc(kBite), 1, kBite);
      usleep(500);
    }
  }
  pid_t pid_;
};

class Scarcity : public Storm {
 protected:
  static bool limitFiles() {
    const rlimit few{16, 16};
    return setrlimit(RLIMIT_NOFILE, &few) == 0;
  }
  /// The memory that one process may have when it shares it with a hog.
  static constexpr long kMemory = 64L << 20;
};

TEST_F(Scarcity, OfMemoryInTheMenu) {
  const ControlGroup group("memory");
  if (!group.reason().empty()) GTEST_SKIP() << group.reason();
  ASSERT_TRUE(group.limitMemory(kMemory));
  const Crowd crowd({{"living", 1000}});
  LedProgram program([&] { return group.add(getpid()); });
  const Hog hog(group);
  ride(program, crowd.steady());
  EXPECT_GT(group.killsForMemory(), 0) << "there was enough";
}

TEST_F(Scarcity, OfMemoryOnTheTerminal) {
  const ControlGroup group("memory");
  if (!group.reason().empty()) GTEST_SKIP() << group.reason();
  ASSERT_TRUE(group.limitMemory(kMemory));
  const Crowd crowd({{"living", 1000}});
  TerminalSession terminal({.prepare = [&] { return group.add(getpid()); }});
  const Hog hog(group);
  ride(terminal);
  EXPECT_GT(group.killsForMemory(), 0) << "there was enough";
}

TEST_F(Scarcity, OfOpenFilesInTheMenu) {
  const Crowd crowd({{"living", 1000}, {"births", 100}});
  LedProgram program(limitFiles);
  ride(program, crowd.steady());
}

TEST_F(Scarcity, OfOpenFilesOnTheTerminal) {
  const Crowd crowd({{"living", 1000}, {"births", 100}});
  TerminalSession terminal({.prepare = limitFiles});
  ride(terminal);
}

}  // namespace
