// A day in minutes.
#include <cstdio>

#include "soak/crowd.h"
#include "soak/storm.h"
#include "soak/vitals.h"

namespace {

class Day : public Storm {};

TEST_F(Day, OfRefreshesTakesNoMemory) {
  constexpr int kRefreshes = 24 * 60 * 60 / 5;
  const Crowd crowd({{"living", 40}, {"births", 20}, {"titles", 1}});
  LedProgram program;
  constexpr int kWarmUp = 500;
  for (int i = 0; i < kWarmUp; ++i) ASSERT_TRUE(refresh(program, crowd.steady()));
  const long before = anonymousMemory(program.pid());
  const std::size_t files = openFiles(program.pid());
  for (int i = 0; i < kRefreshes; ++i) ASSERT_TRUE(refresh(program, crowd.steady()));
  const long after = anonymousMemory(program.pid());
  EXPECT_LT(after, before + kMostGrowthKiB);
  EXPECT_LE(openFiles(program.pid()), files);
  std::printf("  %d refreshes, RssAnon %ld KiB, then %ld KiB\n", kRefreshes, before, after);
}

}  // namespace
