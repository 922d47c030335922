#include "frontends/qt/screen_place.h"

#include <gtest/gtest.h>

#include <QRect>

#include "fakes/row_name.h"

namespace {

struct CornerRow {
  const char* name;
  QPoint icon;
  QPoint corner;
};
class CornerBeside : public testing::TestWithParam<CornerRow> {};
TEST_P(CornerBeside, TheIconIsOnTheScreen) {
  EXPECT_EQ(cornerBeside(GetParam().icon, {300, 120}, {0, 0, 1920, 1080}), GetParam().corner);
}
INSTANTIATE_TEST_SUITE_P(Table, CornerBeside,
                         testing::Values(CornerRow{"PanelBelow", {1000, 1060}, {850, 876}},
                                         CornerRow{"PanelAbove", {1000, 12}, {850, 44}},
                                         CornerRow{"RightEdge", {1900, 1060}, {1620, 876}},
                                         CornerRow{"PanelAtTheLeft", {16, 700}, {0, 516}},
                                         CornerRow{"OutsideOfIt", {5000, 5000}, {1620, 960}}),
                         rowName<CornerRow>);

TEST(CornerBesideTheIcon, IsOnItsOwnScreen) {
  EXPECT_EQ(cornerBeside({2000, 1060}, {300, 120}, {1920, 0, 1280, 1080}), QPoint(1920, 876));
}

TEST(CornerBesideTheIcon, OfAWindowThatIsTooLargeIsTheScreens) {
  EXPECT_EQ(cornerBeside({500, 500}, {3000, 2000}, {0, 0, 1920, 1080}), QPoint(0, 0));
}

struct WithinRow {
  const char* name;
  QPoint wanted;
  QSize window;
  QPoint corner;
};
class CornerWithin : public testing::TestWithParam<WithinRow> {};
TEST_P(CornerWithin, IsWhereTheWindowIsWhollyInTheArea) {
  // A screen with a panel of 44 lines below, and one of 30 columns at the left.
  EXPECT_EQ(cornerWithin(GetParam().wanted, GetParam().window, {30, 0, 1250, 980}),
            GetParam().corner);
}
INSTANTIATE_TEST_SUITE_P(
    Table, CornerWithin,
    testing::Values(WithinRow{"Fits", {100, 100}, {300, 500}, {100, 100}},
                    WithinRow{"PanelBelow", {900, 1002}, {300, 500}, {900, 480}},
                    WithinRow{"PanelAtTheLeft", {4, 100}, {300, 500}, {30, 100}},
                    WithinRow{"RightEdge", {1270, 1002}, {300, 500}, {980, 480}},
                    WithinRow{"TooHigh", {100, 1002}, {300, 2000}, {100, 0}},
                    WithinRow{"TooWide", {100, 100}, {2000, 500}, {30, 100}}),
    rowName<WithinRow>);

TEST(LikelyCorner, IsAtTheMiddleOfTheScreensTop) {
  EXPECT_EQ(likelyCorner({300, 120}, {1920, 40, 1280, 1040}), QPoint(2410, 40));
}

}  // namespace
