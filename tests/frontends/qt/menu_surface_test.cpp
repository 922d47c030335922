#include "frontends/qt/wayland/menu_surface.h"

#include <gtest/gtest.h>

#include <QMenu>
#include <QScreen>
#include <QSize>
#include <QWindow>
#include <vector>

#include "fakes/row_name.h"
#include "frontends/qt/menu_style.h"

namespace {

class MenuOnWayland : public testing::Test {
 protected:
  void open(int rows) {
    style.dress(menu);
    for (int row = 0; row < rows; ++row) menu.addAction("Row");
    menu.popup({0, 0});
  }
  int screenHeight() const { return menu.screen()->geometry().height(); }

  MenuStyle style;
  QMenu menu;
};

TEST_F(MenuOnWayland, LeavesAPanelFree) {
  letMenuOpenUnasked(menu, true);
  open(500);
  EXPECT_EQ(menu.height(), screenHeight() - 64);
}

TEST_F(MenuOnWayland, LeavesItFreeEachTimeItOpens) {
  letMenuOpenUnasked(menu, true);
  open(3);
  menu.close();
  open(500);
  EXPECT_EQ(menu.height(), screenHeight() - 64);
}

TEST_F(MenuOnWayland, IsNoHigherThanItsRows) {
  letMenuOpenUnasked(menu, true);
  open(3);
  EXPECT_EQ(menu.height(), menu.sizeHint().height());
}

TEST_F(MenuOnWayland, IsASurfaceThatNeedsNoClick) {
  letMenuOpenUnasked(menu, true);
  open(3);
  EXPECT_EQ(menu.windowHandle()->type(), Qt::ToolTip);
}

TEST_F(MenuOnWayland, IsAMenuLikeAnyOtherElsewhere) {
  letMenuOpenUnasked(menu);
  open(500);
  EXPECT_GT(menu.height(), screenHeight() - 64);
  EXPECT_EQ(menu.windowHandle()->type(), Qt::Popup);
}

struct LinesRow {
  const char* name;
  QSize told;
  qreal scale;
  std::vector<OutputMode> modes;
  int lines;
};
class LinesOnWayland : public testing::TestWithParam<LinesRow> {};
TEST_P(LinesOnWayland, ArePoints) {
  EXPECT_EQ(linesOf(GetParam().told, GetParam().scale, GetParam().modes), GetParam().lines);
}
constexpr QSize kFullHd(1920, 1080);
INSTANTIATE_TEST_SUITE_P(
    Table, LinesOnWayland,
    testing::Values(
        LinesRow{"OnePixelAPoint", kFullHd, 1, {{kFullHd, 1}}, 1080},
        LinesRow{"ToldInPixels", {2560, 1600}, 2, {{{2560, 1600}, 2}}, 800},
        LinesRow{"ToldInPoints", {1280, 800}, 2, {{{2560, 1600}, 2}}, 800},
        LinesRow{"OneAndAHalf", {1707, 1067}, 2, {{{2560, 1600}, 2}}, 1067},
        LinesRow{"OnItsSide", {1600, 2560}, 2, {{{1600, 2560}, 2}}, 1280},
        LinesRow{"SecondScreen", {2560, 1600}, 2, {{kFullHd, 1}, {{2560, 1600}, 2}}, 800},
        LinesRow{"AnotherHasItsSize", kFullHd, 2, {{{3840, 2160}, 2}, {kFullHd, 1}}, 1080},
        LinesRow{"NobodySays", {1280, 800}, 2, {}, 800}),
    rowName<LinesRow>);

}  // namespace
