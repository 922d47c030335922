#include "ui/pressure_level.h"

#include <gtest/gtest.h>

#include "fakes/row_name.h"

namespace {

struct LevelRow {
  const char* name;
  double pressure;
  PressureLevel level;
};

class PressureLevels : public testing::TestWithParam<LevelRow> {};

TEST_P(PressureLevels, HaveTheirThresholds) {
  EXPECT_EQ(pressureLevel(GetParam().pressure), GetParam().level);
}

INSTANTIATE_TEST_SUITE_P(Table, PressureLevels,
                         testing::Values(LevelRow{"None", 0, PressureLevel::low},
                                         LevelRow{"BelowMedium", 0.549, PressureLevel::low},
                                         LevelRow{"Medium", 0.55, PressureLevel::medium},
                                         LevelRow{"BelowHigh", 0.799, PressureLevel::medium},
                                         LevelRow{"High", 0.8, PressureLevel::high},
                                         LevelRow{"Full", 1, PressureLevel::high}),
                         rowName<LevelRow>);

TEST(PercentUsed, IsRounded) {
  EXPECT_EQ(percentUsed(0.004), 0);
  EXPECT_EQ(percentUsed(0.125), 12);
  EXPECT_EQ(percentUsed(0.375), 38);
  EXPECT_EQ(percentUsed(0.994), 99);
  EXPECT_EQ(percentUsed(1), 100);
}

}  // namespace
