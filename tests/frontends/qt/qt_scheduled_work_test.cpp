#include "frontends/qt/qt_scheduled_work.h"

#include <gtest/gtest.h>

#include "frontends/qt/event_loop.h"

namespace {

TEST(QtScheduledWork, RunsOnce) {
  QObject owner;
  int runs = 0;
  int others = 0;
  scheduleWork(owner, 0.001, false, [&runs] { ++runs; });
  scheduleWork(owner, 0.001, true, [&others] { ++others; });
  EXPECT_TRUE(eventually([&others] { return others >= 5; }));
  EXPECT_EQ(runs, 1);
}

TEST(QtScheduledWork, CancelledWorkNeverRuns) {
  QObject owner;
  int runs = 0;
  int others = 0;
  const auto work = scheduleWork(owner, 0.001, false, [&runs] { ++runs; });
  work->cancel();
  work->cancel();
  scheduleWork(owner, 0.005, true, [&others] { ++others; });
  EXPECT_TRUE(eventually([&others] { return others >= 2; }));
  EXPECT_EQ(runs, 0);
}

TEST(QtScheduledWork, MayCancelItselfWhileItRuns) {
  QObject owner;
  int runs = 0;
  int others = 0;
  std::shared_ptr<ScheduledWork> work;
  work = scheduleWork(owner, 0.001, true, [&] {
    ++runs;
    work->cancel();
  });
  scheduleWork(owner, 0.005, true, [&others] { ++others; });
  EXPECT_TRUE(eventually([&others] { return others >= 2; }));
  EXPECT_EQ(runs, 1);
}

TEST(QtScheduledWork, MayBeCancelledAfterItsOwnerWent) {
  auto owner = std::make_unique<QObject>();
  const auto work = scheduleWork(*owner, 0.001, false, [] {});
  owner.reset();
  work->cancel();
}

}  // namespace
