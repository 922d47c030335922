#include "frontends/qt/wayland/menu_surface.h"

#include <gtest/gtest.h>

#include <QMenu>
#include <QScreen>
#include <QWindow>

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

}  // namespace
