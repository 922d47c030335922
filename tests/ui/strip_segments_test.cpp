#include "ui/strip_segments.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <vector>

#include "fakes/row_name.h"
#include "ui/process_color.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr SystemMemory::Snapshot kSixteenGB{.usedGB = 4, .totalGB = 16, .freeGB = 1};
const MemoryPressureView kEarlier{{{0.3, {1, 0, 0}, "earlier", 1, 5000}}, 0.7};

VordaProcess process(std::int32_t pid, double memMB, const char* name = "x") {
  return {.pid = pid, .displayName = name, .product = "App", .memMB = memMB};
}

TEST(StripSegments, HasASegmentPerProcessInItsColorAndOrder) {
  const VordaProcess small = process(7, 1024, "Mail");
  const VordaProcess large = process(8, 4096, "Safari");
  MemoryPressureView strip = kEarlier;
  EXPECT_TRUE(applyPressureStrip(strip, kSixteenGB, {&small, &large}));
  EXPECT_THAT(strip.segments,
              ElementsAre(Segment{0.0625, ProcessColor::color(small), "Mail", 7, 1024},
                          Segment{0.25, ProcessColor::color(large), "Safari", 8, 4096}));
  EXPECT_DOUBLE_EQ(strip.pressure, 0.25);
}

TEST(StripSegments, LeavesOutWhatHoldsTwoThousandthsOrLess) {
  // 1000 MiB of memory in all, so that 2 MiB are exactly the threshold.
  const SystemMemory::Snapshot sys{.usedGB = 0, .totalGB = 1000.0 / 1024, .freeGB = 0};
  const VordaProcess tooSmall = process(1, 2);
  const VordaProcess justEnough = process(2, 2.001);
  MemoryPressureView strip;
  applyPressureStrip(strip, sys, {&tooSmall, &justEnough});
  ASSERT_EQ(strip.segments.size(), 1U);
  EXPECT_EQ(strip.segments[0].pid, 2);
}

TEST(StripSegments, OfNoProcessesHasNoSegments) {
  MemoryPressureView strip = kEarlier;
  EXPECT_TRUE(applyPressureStrip(strip, kSixteenGB, {}));
  EXPECT_THAT(strip.segments, IsEmpty());
}

TEST(StripSegments, StaysAsItWasWhileTheMemoryIsUnknown) {
  const VordaProcess any = process(1, 100);
  for (const double total : {0.0, 0.1, -1.0}) {
    MemoryPressureView strip = kEarlier;
    EXPECT_FALSE(applyPressureStrip(strip, {.usedGB = 1, .totalGB = total}, {&any}));
    EXPECT_EQ(strip, kEarlier) << total;
  }
  MemoryPressureView strip = kEarlier;
  EXPECT_TRUE(applyPressureStrip(strip, {.usedGB = 0.05, .totalGB = 0.101}, {&any}));
  EXPECT_NE(strip, kEarlier);
}

struct PressureRow {
  const char* name;
  double usedGB;
  double pressure;
};

class Pressure : public testing::TestWithParam<PressureRow> {};

TEST_P(Pressure, IsUsedByTotalFromZeroToOne) {
  MemoryPressureView strip;
  applyPressureStrip(strip, {.usedGB = GetParam().usedGB, .totalGB = 16}, {});
  EXPECT_DOUBLE_EQ(strip.pressure, GetParam().pressure);
}

INSTANTIATE_TEST_SUITE_P(Table, Pressure,
                         testing::Values(PressureRow{"Half", 8, 0.5}, PressureRow{"All", 16, 1},
                                         PressureRow{"MoreThanAll", 20, 1},
                                         PressureRow{"Negative", -1, 0}),
                         rowName<PressureRow>);

}  // namespace
