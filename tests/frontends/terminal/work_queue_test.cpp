#include "frontends/terminal/work_queue.h"

#include <gtest/gtest.h>

#include <string>

using terminal::WorkQueue;

namespace {

TEST(WorkQueue, RunsWhatIsDueInItsOrder) {
  WorkQueue queue;
  std::string ran;
  queue.add(2, 0, [&] { ran += "b"; });
  queue.add(1, 0, [&] { ran += "a"; });
  queue.add(3, 0, [&] { ran += "c"; });
  EXPECT_EQ(queue.nextDue(), 1);
  queue.run(2);
  EXPECT_EQ(ran, "ab");
  EXPECT_EQ(queue.nextDue(), 3);
  queue.run(3);
  queue.run(4);
  EXPECT_EQ(ran, "abc");
  EXPECT_EQ(queue.nextDue(), std::nullopt);
}

TEST(WorkQueue, RepeatsWithoutDrifting) {
  WorkQueue queue;
  int runs = 0;
  queue.add(5, 5, [&] { ++runs; });
  queue.run(5.2);
  EXPECT_EQ(queue.nextDue(), 10);
  queue.run(10.1);
  EXPECT_EQ(runs, 2);
}

TEST(WorkQueue, DoesNotMakeUpForTimeThatWasSlept) {
  WorkQueue queue;
  int runs = 0;
  queue.add(5, 5, [&] { ++runs; });
  queue.run(1000);
  EXPECT_EQ(runs, 1);
  EXPECT_EQ(queue.nextDue(), 1005);
}

TEST(WorkQueue, DoesNotRunWhatWasCancelled) {
  WorkQueue queue;
  int runs = 0;
  const auto once = queue.add(1, 0, [&] { ++runs; });
  const auto always = queue.add(1, 1, [&] { ++runs; });
  once->cancel();
  always->cancel();
  EXPECT_EQ(queue.nextDue(), std::nullopt);
  queue.run(10);
  EXPECT_EQ(runs, 0);
}

TEST(WorkQueue, LetsWorkCancelItselfAndAddMore) {
  WorkQueue queue;
  int runs = 0;
  std::shared_ptr<ScheduledWork> self;
  self = queue.add(1, 1, [&] {
    ++runs;
    self->cancel();
    queue.add(1.5, 0, [&] { runs += 10; });
  });
  queue.run(2);
  EXPECT_EQ(runs, 11);
}

TEST(WorkQueue, RunsOtherWorkWhileOneWaits) {
  WorkQueue queue;
  std::string ran;
  queue.add(1, 0, [&] {
    ran += "(";
    queue.run(2);
    ran += ")";
  });
  queue.add(2, 0, [&] { ran += "x"; });
  queue.run(1);
  EXPECT_EQ(ran, "(x)");
}

}  // namespace
