#include "frontends/qt/menu_window.h"

#include <gtest/gtest.h>

#include <QLabel>
#include <QPushButton>

#include "frontends/qt/event_loop.h"
#include "frontends/qt/strip_widget.h"

namespace {

class MenuWindowTest : public testing::Test {
 protected:
  MenuWindowTest() {
    window.setTitle("Vorda²");
    window.show();
    settle();
  }

  QPushButton* button() const { return window.findChild<QPushButton*>(); }

  MenuWindow window;
};

TEST_F(MenuWindowTest, HoldsTheStripAboveTheButton) {
  const QWidget* strip = nullptr;
  for (QObject* child : window.children()) {
    if (const auto* found = dynamic_cast<StripWidget*>(child)) strip = found;
  }
  ASSERT_NE(strip, nullptr);
  EXPECT_LT(strip->geometry().bottom(), button()->geometry().top());
  EXPECT_EQ(button()->text(), "Vorda²");
  EXPECT_EQ(window.windowTitle(), "Vorda²");
}

TEST_F(MenuWindowTest, IsAWindowLikeAnyOther) {
  EXPECT_FALSE(window.windowFlags() & Qt::WindowStaysOnTopHint);
  EXPECT_TRUE(window.windowFlags() & Qt::WindowMinimizeButtonHint);
}

TEST_F(MenuWindowTest, SaysHowItComesBackWhereItReplacesTheIcon) {
  const auto* label = window.findChild<QLabel*>();
  EXPECT_EQ(label->text(), "Closing this window puts it away. To get it back, start Vorda again.");
  EXPECT_TRUE(label->isVisible());
  EXPECT_EQ(label->geometry().left(), 4);
  EXPECT_GT(label->geometry().top(), button()->geometry().bottom());
  window.setReplacesIcon(false);
  EXPECT_FALSE(label->isVisible());
}

TEST_F(MenuWindowTest, ButtonAsksForTheMenu) {
  int requests = 0;
  QObject::connect(&window, &MenuWindow::menuRequested, [&requests] { ++requests; });
  button()->click();
  EXPECT_EQ(requests, 1);
  EXPECT_GE(window.menuPosition().y(), window.mapToGlobal(button()->pos()).y());
}

TEST_F(MenuWindowTest, ClosingPutsItAway) {
  window.close();
  EXPECT_FALSE(window.isVisible());
  window.show();
  EXPECT_TRUE(window.isVisible());
}

TEST_F(MenuWindowTest, RunsWorkOnceItIsOnScreen) {
  int runs = 0;
  window.whenPlaced([&runs] { ++runs; });
  EXPECT_EQ(runs, 1);

  MenuWindow later;
  later.whenPlaced([&runs] { ++runs; });
  EXPECT_EQ(runs, 1);
  later.show();
  EXPECT_TRUE(eventually([&runs] { return runs == 2; }));
}

}  // namespace
