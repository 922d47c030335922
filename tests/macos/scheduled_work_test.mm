#include "frontends/appkit/scheduled_work.h"

#import <Foundation/Foundation.h>
#include <gtest/gtest.h>

#include "macos/appkit/user.h"
#include "macos/mac_test.h"

namespace {

class ScheduledWorkTest : public MacTest {
 protected:
  std::function<void()> counting() {
    return [this] { ++runs; };
  }
  int runs = 0;
};

TEST_F(ScheduledWorkTest, RepeatingTimerIsInTheCommonModesOfTheMainRunLoop) {
  const auto work = repeatOnMainRunLoop(5, counting());
  ASSERT_EQ(appkit::record().timers.size(), 1);
  const appkit::AddedTimer& timer = appkit::record().timers[0];
  EXPECT_EQ(timer.interval, 5);
  EXPECT_TRUE(timer.repeats);
  EXPECT_EQ(timer.mode, [NSRunLoopCommonModes UTF8String]);
  EXPECT_TRUE(timer.onMainRunLoop);
  EXPECT_EQ(timer.tolerance, 0.5) << "macOS may fire it together with others";
  EXPECT_EQ(appkit::record().activities, 0) << "and nap the program meanwhile";
}

TEST_F(ScheduledWorkTest, RepeatingTimerFiresUntilItIsCancelled) {
  const auto work = repeatOnMainRunLoop(5, counting());
  appkit::fireTimers();
  appkit::fireTimers();
  EXPECT_EQ(runs, 2);
  work->cancel();
  appkit::fireTimers();
  EXPECT_EQ(runs, 2);
}

TEST_F(ScheduledWorkTest, ForgottenTimerGoesOn) {
  repeatOnMainRunLoop(5, counting());
  appkit::fireTimers();
  EXPECT_EQ(runs, 1);
}

TEST_F(ScheduledWorkTest, TimerMayCancelItself) {
  std::shared_ptr<ScheduledWork> work;
  work = repeatOnMainRunLoop(5, [&] {
    ++runs;
    work->cancel();
  });
  appkit::fireTimers();
  appkit::fireTimers();
  EXPECT_EQ(runs, 1);
}

TEST_F(ScheduledWorkTest, CancelledTimerLetsGoOfItsWork) {
  auto token = std::make_shared<int>(1);
  const std::weak_ptr<int> weak = token;
  @autoreleasepool {
    const auto work = repeatOnMainRunLoop(5, [token] {});
    token.reset();
    EXPECT_FALSE(weak.expired());
    work->cancel();
  }
  @autoreleasepool {
    appkit::reset();
  }
  EXPECT_TRUE(weak.expired());
}

// GNUstep's run loop does not fire timers of the common modes by itself, a Mac's does.
TEST_F(ScheduledWorkTest, DelayedWorkRunsOnceAtItsTimeOnTheMainQueue) {
  runOnMainQueue(0.25, counting());
  EXPECT_EQ(appkit::waitingOnMainQueue(), 1);
  appkit::advanceMainQueue(0.24);
  EXPECT_EQ(runs, 0);
  appkit::advanceMainQueue(0.02);
  EXPECT_EQ(runs, 1);
  appkit::advanceMainQueue(10);
  EXPECT_EQ(runs, 1);
}

TEST_F(ScheduledWorkTest, ProgramIsNotNappedWhileDelayedWorkWaits) {
  const auto first = runOnMainQueue(0.25, [] { EXPECT_EQ(appkit::record().activities, 2); });
  const auto second = runOnMainQueue(2.5, counting());
  EXPECT_EQ(appkit::record().activities, 2);
  appkit::advanceMainQueue(1);
  EXPECT_EQ(appkit::record().activities, 1);
  second->cancel();
  EXPECT_EQ(appkit::record().activities, 0);
  second->cancel();
  appkit::advanceMainQueue(10);
  EXPECT_EQ(appkit::record().activities, 0);
}

TEST_F(ScheduledWorkTest, CancelledDelayedWorkDoesNotRun) {
  const auto work = runOnMainQueue(0.25, counting());
  work->cancel();
  appkit::advanceMainQueue(1);
  EXPECT_EQ(runs, 0);
  work->cancel();
}

TEST_F(ScheduledWorkTest, DelayedWorkMayBeCancelledWhenItHasRun) {
  const auto work = runOnMainQueue(0.25, counting());
  appkit::advanceMainQueue(1);
  work->cancel();
  EXPECT_EQ(runs, 1);
}

TEST_F(ScheduledWorkTest, DelayedWorkMayCancelItself) {
  std::shared_ptr<ScheduledWork> work;
  work = runOnMainQueue(0.25, [&] {
    work->cancel();
    ++runs;
  });
  appkit::advanceMainQueue(1);
  EXPECT_EQ(runs, 1);
}

TEST_F(ScheduledWorkTest, DelayedWorkIsFreedWhenItHasRunOrIsCancelled) {
  for (const bool cancels : {false, true}) {
    auto token = std::make_shared<int>(1);
    const std::weak_ptr<int> weak = token;
    const auto work = runOnMainQueue(0.25, [token] {});
    token.reset();
    EXPECT_FALSE(weak.expired());
    if (cancels) {
      work->cancel();
    } else {
      appkit::advanceMainQueue(1);
    }
    EXPECT_TRUE(weak.expired());
  }
}

}  // namespace
