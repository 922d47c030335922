#include "ui/row_remarks.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

#include "fakes/row_name.h"
#include "fakes/scripted_platform.h"
#include "ui/menu_builders.h"
#include "ui/menu_construction.h"

namespace {

MenuItem remarkedRow(std::int32_t pid, const std::string& name) {
  MenuItem row = MenuBuilders::named("★ ", name, "  ·  1 GB");
  row.process = ProcessReference{pid, {}};
  return row;
}

TEST(RowTag, HasThePidOfNamesakesAlone) {
  const std::vector<MenuItem> rows{remarkedRow(30, "small"), remarkedRow(31, "small"),
                                   remarkedRow(40, "big")};
  EXPECT_EQ(rowTag(rows[0], rows, nullptr), "  pid 30");
  EXPECT_EQ(rowTag(rows[1], rows, nullptr), "  pid 31");
  EXPECT_EQ(rowTag(rows[2], rows, nullptr), "");
}

TEST(RowTag, OfAProcessThatStandsInTwoSectionsHasNoPid) {
  const std::vector<MenuItem> rows{remarkedRow(30, "small"), remarkedRow(30, "small")};
  EXPECT_EQ(rowTag(rows[0], rows, nullptr), "");
}

TEST(RowTag, HasTheLetterOfItsSegmentAndThatItWasLeftBehind) {
  MemoryPressureView strip;
  strip.segments = {{.fraction = 0.5, .pid = 31}};
  std::vector<MenuItem> rows{remarkedRow(30, "small"), remarkedRow(31, "small")};
  rows[1].isLeftBehind = true;
  EXPECT_EQ(rowTag(rows[0], rows, &strip), "  pid 30");
  EXPECT_EQ(rowTag(rows[1], rows, &strip), "  pid 31  [A]  left behind");
}

TEST(RowTag, OfOtherRowsIsEmpty) {
  const std::vector<MenuItem> rows{MenuBuilders::label("hermes"), MenuBuilders::label("hermes")};
  EXPECT_EQ(rowTag(rows[0], rows, nullptr), "");
}

struct TimeRow {
  const char* name;
  std::uint64_t minutes;
  const char* text;
};

class RunningTime : public testing::TestWithParam<TimeRow> {};

TEST_P(RunningTime, IsInTheTwoLargestUnits) {
  constexpr std::uint64_t kStart = 1'000;
  resetMachine();
  machine().clock = kStart + GetParam().minutes * 60'000'000'000;
  const MenuItem row = MenuConstruction::processItem({.pid = 7, .startTime = kStart});
  EXPECT_EQ(runningTime(row), GetParam().text);
}

INSTANTIATE_TEST_SUITE_P(Table, RunningTime,
                         testing::Values(TimeRow{"Nothing", 0, "for 0 min"},
                                         TimeRow{"AlmostAnHour", 59, "for 59 min"},
                                         TimeRow{"AnHour", 60, "for 1 h 0 min"},
                                         TimeRow{"AlmostADay", 1439, "for 23 h 59 min"},
                                         TimeRow{"ADay", 1440, "for 1 d 0 h"},
                                         TimeRow{"Weeks", 30 * 1440 + 119, "for 30 d 1 h"}),
                         rowName<TimeRow>);

TEST(RunningTime, IsUnknownOfAProcessThatBeginsLaterOrAtAnUnknownTime) {
  resetMachine();
  machine().clock = 5;
  EXPECT_EQ(runningTime(MenuConstruction::processItem({.pid = 7, .startTime = 6})), "");
  EXPECT_EQ(runningTime(MenuConstruction::processItem({.pid = 7})), "");
  EXPECT_EQ(runningTime(MenuBuilders::label("System")), "");
}

}  // namespace
