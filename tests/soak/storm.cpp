#include "soak/storm.h"

#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <functional>

#include "soak/vitals.h"

namespace {

using Clock = std::chrono::steady_clock;

double allSeconds = 120;

double secondsSince(Clock::time_point begin) {
  return std::chrono::duration<double>(Clock::now() - begin).count();
}

/// How long something takes that this process and the program do together. That the machine
/// runs others meanwhile is not the program's fault.
class Stopwatch {
 public:
  explicit Stopwatch(pid_t program) : program_(program) {}
  double seconds() const { return secondsSince(begin_) - (withoutCpu(program_) - waited_); }

 private:
  static double withoutCpu(pid_t program) {
    return secondsWithoutCpu(program) + secondsWithoutCpu(getpid());
  }
  pid_t program_;
  Clock::time_point begin_ = Clock::now();
  double waited_ = withoutCpu(program_);
};

struct Steps {
  int warmUp;  ///< buffers have the size they need, and what is looked up once has been
  int least;
};
constexpr Steps kInTheMenu{.warmUp = 10, .least = 20};
/// Each is two keys, after which the program has to be left alone for a while: in a short run these
/// would be most of the time.
constexpr Steps kOnTheTerminal{.warmUp = 3, .least = 6};

/// Takes steps until the time is over, and looks at what the program holds: peaks, as memory
/// rises and falls with every refresh.
void holdFor(double seconds, const Steps& steps, pid_t program, long mostGrowthKiB,
             const std::function<bool()>& step) {
  for (int i = 0; i < steps.warmUp; ++i) {
    if (!step()) return;
  }
  const std::size_t files = openFiles(program);
  std::array<long, 2> peaks{};
  const auto begin = Clock::now();
  double slowest = 0;
  int taken = 0;
  for (int half = 1; long& peak : peaks) {
    const auto isOver = [&] {
      return taken >= steps.least / 2 * half && secondsSince(begin) >= seconds / 2 * half;
    };
    do {
      const Stopwatch watch(program);
      if (!step()) return;
      slowest = std::max(slowest, watch.seconds());
      peak = std::max(peak, anonymousMemory(program));
      ++taken;
    } while (!isOver());
    ++half;
  }
  EXPECT_LT(peaks[1], peaks[0] + mostGrowthKiB) << "KiB of memory";
  EXPECT_LE(openFiles(program), files) << "open files";
  std::printf("  %d steps, the slowest in %.0f ms, %ld KiB of memory, %zu open files\n", taken,
              slowest * 1000, peaks[1], files);
}

}  // namespace

void Storm::setSeconds(double seconds) {
  allSeconds = seconds;
}

double Storm::share() {
  return allSeconds / testing::UnitTest::GetInstance()->test_to_run_count();
}

bool Storm::refresh(LedProgram& program, const Pids& expected) {
  const Stopwatch watch(program.pid());
  const LedProgram::Answer answer = program.refresh();
  EXPECT_TRUE(answer.isWhole) << "the program has ended, or hangs";
  EXPECT_LE(watch.seconds(), kLongestFreeze);
  Pids missing;
  std::copy_if(expected.begin(), expected.end(), std::back_inserter(missing),
               [&](pid_t pid) { return !answer.pids.contains(pid); });
  EXPECT_EQ(missing, Pids()) << "not in the list, of " << expected.size();
  EXPECT_EQ(answer.alerts, std::vector<std::string>()) << "alerts, though nothing was chosen";
  return !HasFailure();
}

void Storm::ride(LedProgram& program, const Pids& expected, double seconds, long mostGrowthKiB) {
  holdFor(seconds, kInTheMenu, program.pid(), mostGrowthKiB,
          [&] { return refresh(program, expected); });
}

bool Storm::answersKeys(TerminalSession& terminal) {
  const auto isOpen = [&] { return terminal.screen().find("[ OK ]").x >= 0; };
  terminal.releaseKey();
  const Stopwatch opening(terminal.pid());
  EXPECT_TRUE(terminal.pressAtOnce("?", isOpen)) << terminal.screen().picture();
  EXPECT_LE(opening.seconds(), kLongestFreeze);
  terminal.releaseKey();
  const Stopwatch closing(terminal.pid());
  EXPECT_TRUE(terminal.pressAtOnce("\r", [&] { return !isOpen(); }));
  EXPECT_LE(closing.seconds(), kLongestFreeze);
  return !HasFailure();
}

void Storm::ride(TerminalSession& terminal, double seconds, const std::function<void()>& before) {
  ASSERT_TRUE(terminal.waitFor("q Quit"));
  holdFor(seconds, kOnTheTerminal, terminal.pid(), kMostGrowthKiB, [&] {
    if (before) before();
    terminal.send("r");
    return answersKeys(terminal);
  });
}
