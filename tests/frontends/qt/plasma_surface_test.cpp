#include "frontends/qt/wayland/plasma_surface.h"

#include <gtest/gtest.h>

#include <QRect>
#include <QWindow>

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
                         testing::Values(CornerRow{"PanelBelow", {1000, 1060}, {850, 908}},
                                         CornerRow{"PanelAbove", {1000, 12}, {850, 44}},
                                         CornerRow{"RightEdge", {1900, 1060}, {1620, 908}},
                                         CornerRow{"PanelAtTheLeft", {16, 700}, {0, 548}},
                                         CornerRow{"OutsideOfIt", {5000, 5000}, {1620, 960}}),
                         rowName<CornerRow>);

TEST(CornerBesideTheIcon, IsOnItsOwnScreen) {
  EXPECT_EQ(cornerBeside({2000, 1060}, {300, 120}, {1920, 0, 1280, 1080}), QPoint(1920, 908));
}

TEST(CornerBesideTheIcon, OfAWindowThatIsTooLargeIsTheScreens) {
  EXPECT_EQ(cornerBeside({500, 500}, {3000, 2000}, {0, 0, 1920, 1080}), QPoint(0, 0));
}

TEST(PlasmasSurface, IsNoneOnOtherDisplays) {
  QWindow window;
  window.show();
  EXPECT_EQ(PlasmaSurface::of(window, QPoint(1, 1)), nullptr);
}

}  // namespace
