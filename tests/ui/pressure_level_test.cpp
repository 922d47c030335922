#include "ui/pressure_level.h"

#include <gtest/gtest.h>

#include "fakes/row_name.h"

namespace {

struct Row {
  const char* name;
  double pressure;
  PressureLevel level;
};

class PressureLevels : public testing::TestWithParam<Row> {};

TEST_P(PressureLevels, HaveTheirThresholds) {
  EXPECT_EQ(pressureLevel(GetParam().pressure), GetParam().level);
}

INSTANTIATE_TEST_SUITE_P(Table, PressureLevels,
                         testing::Values(Row{"None", 0, PressureLevel::low},
                                         Row{"BelowMedium", 0.549, PressureLevel::low},
                                         Row{"Medium", 0.55, PressureLevel::medium},
                                         Row{"BelowHigh", 0.799, PressureLevel::medium},
                                         Row{"High", 0.8, PressureLevel::high},
                                         Row{"Full", 1, PressureLevel::high}),
                         rowName<Row>);

}  // namespace
