// The warning of memory that runs out, in the whole controller.
#include <gmock/gmock.h>

#include <functional>

#include "ui/controller_test.h"

namespace {

using testing::HasSubstr;
using testing::IsEmpty;
constexpr double kGiB = 1073741824;

class MemoryWatch : public ControllerTest {
 protected:
  MemoryWatch() {
    machine().memory.availableBytes = 12 * kGiB;
    addProcess(7, "idle", 2000);
    addProcess(8, "hog", 100);
  }

  /// Lets time pass in small steps; what happens to the machine in each is told by `happen`.
  void pass(double seconds, const std::function<void()>& happen = {}) {
    constexpr double kStep = 0.05;
    for (double passed = 0; passed < seconds; passed += kStep) {
      machine().clock += static_cast<std::uint64_t>(kStep * 1e9);
      if (happen) happen();
      frontEnd_.advance(kStep);
    }
  }

  /// A leak of 1 GB a second.
  static void leak() {
    machine().memory.availableBytes = *machine().memory.availableBytes - 0.05 * kGiB;
    machine().find(8)->footprintMB = *machine().find(8)->footprintMB + 51.2;
  }
  /// Until 1 GB is left.
  void leakAway() { pass(11, &leak); }

  std::vector<std::string> titlesOfWarnings() const {
    std::vector<std::string> all;
    for (const auto& warning : frontEnd_.warnings) all.push_back(warning ? warning->title : "");
    return all;
  }
};

TEST_F(MemoryWatch, WarnsOnceOfALeakAndNamesIt) {
  start();
  leakAway();
  ASSERT_EQ(titlesOfWarnings(), std::vector<std::string>{"Memory is running out"});
  ASSERT_FALSE(frontEnd_.notices.empty());
  const MemoryWarning& warning = *frontEnd_.warnings.front();
  EXPECT_EQ(warning.process, (ProcessReference{8, 1}));
  EXPECT_THAT(warning.text, HasSubstr(" left. hog holds "));
  EXPECT_EQ(frontEnd_.notices.back(), warning.title + ": " + warning.text);
}

TEST_F(MemoryWatch, WarnsBeforeTheEndThoughTheNextRefreshWouldComeAfterIt) {
  machine().memory.availableBytes = 7.5 * kGiB;
  start();
  pass(7.3, &leak);
  EXPECT_EQ(frontEnd_.warnings.size(), 1U);
}

TEST_F(MemoryWatch, SamplesProcessesNoMoreOftenThanEverBeforeThat) {
  start();
  const int before = machine().pidListings;
  pass(9.5, &leak);
  EXPECT_EQ(machine().pidListings, before + 1);
  EXPECT_THAT(frontEnd_.warnings, IsEmpty());
}

TEST_F(MemoryWatch, HasNothingToWaitForWhileAllIsWell) {
  start();
  pass(30);
  EXPECT_EQ(frontEnd_.pendingWork(), 1U) << "the timer of the refresh";
}

TEST_F(MemoryWatch, IsSilentWhileTheMenuIsOpen) {
  start();
  openMenu();
  leakAway();
  EXPECT_THAT(frontEnd_.warnings, IsEmpty());
}

TEST_F(MemoryWatch, TheMenuTakesTheWarningBackButTheNoticeStays) {
  start();
  leakAway();
  openMenu();
  ASSERT_EQ(titlesOfWarnings(), (std::vector<std::string>{"Memory is running out", ""}));
  ASSERT_FALSE(frontEnd_.notices.empty());
  EXPECT_NE(frontEnd_.notices.back(), "");
}

TEST_F(MemoryWatch, IsOverAMinuteAfterTheTrouble) {
  start();
  leakAway();
  pass(50);
  ASSERT_EQ(titlesOfWarnings(), std::vector<std::string>{"Memory is running out"});
  ASSERT_FALSE(frontEnd_.notices.empty());
  pass(30);
  EXPECT_EQ(titlesOfWarnings(), (std::vector<std::string>{"Memory is running out", ""}));
  EXPECT_EQ(frontEnd_.notices.back(), "");
}

TEST_F(MemoryWatch, WarnsOfProcessesThatWait) {
  machine().memory.stalls = platform::MemoryStalls{30, 2};
  start();
  pass(14.9);
  EXPECT_THAT(frontEnd_.warnings, IsEmpty());
  pass(5);
  ASSERT_EQ(titlesOfWarnings().size(), 1U);
  ASSERT_TRUE(frontEnd_.warnings.front());
  EXPECT_EQ(frontEnd_.warnings.front()->text,
            "Some 30%, all 2% of the last 10 s. The largest process is idle with 1.95 GB.");
}

TEST_F(MemoryWatch, WhereTheSystemDoesNotTellWhatIsAvailableThereIsNone) {
  machine().memory.availableBytes.reset();
  machine().memory.stalls = platform::MemoryStalls{90, 90};
  start();
  pass(60);
  EXPECT_THAT(frontEnd_.warnings, IsEmpty());
  EXPECT_THAT(frontEnd_.notices, IsEmpty());
}

TEST_F(MemoryWatch, InALimitWhatIsLeftOfItCounts) {
  machine().memory.limit = platform::MemoryLimit{4 * kGiB, {1 * kGiB, 3 * kGiB}};
  start();
  pass(11, [] { machine().memory.limit->inUse.usedBytes += 0.05 * 0.26 * kGiB; });
  ASSERT_EQ(frontEnd_.warnings.size(), 1U);
  ASSERT_TRUE(frontEnd_.warnings.front());
  EXPECT_THAT(frontEnd_.warnings.front()->text, HasSubstr(" of 4.00 GB left."));
}

}  // namespace
