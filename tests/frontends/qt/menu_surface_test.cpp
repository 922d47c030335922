#include "frontends/qt/wayland/menu_surface.h"

#include <gtest/gtest.h>

#include <QByteArray>
#include <QMenu>
#include <QScreen>
#include <QWindow>

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
  int told;
  qreal scale;
  const char* desktops;
  int lines;
};
class LinesOnWayland : public testing::TestWithParam<LinesRow> {};
TEST_P(LinesOnWayland, ArePoints) {
  EXPECT_EQ(linesOf(GetParam().told, GetParam().scale, GetParam().desktops), GetParam().lines);
}
INSTANTIATE_TEST_SUITE_P(Table, LinesOnWayland,
                         testing::Values(LinesRow{"Gnome", 1080, 1, "GNOME", 1080},
                                         LinesRow{"GnomeHidpi", 1600, 2, "GNOME", 800},
                                         LinesRow{"UbuntuHidpi", 1600, 2, "ubuntu:GNOME", 800},
                                         LinesRow{"PlasmaHidpi", 800, 2, "KDE", 800},
                                         LinesRow{"NobodySays", 800, 2, "", 800}),
                         rowName<LinesRow>);

}  // namespace
