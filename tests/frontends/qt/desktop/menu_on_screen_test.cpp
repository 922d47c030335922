// What the menu does on a real X display, under a real pointer and real keys: a screen in memory
// has neither, nor the fonts of a desktop.
#include <gtest/gtest.h>

#include <QApplication>
#include <QScreen>
#include <QStyle>
#include <QTimer>
#include <QWindow>
#include <memory>
#include <string>
#include <vector>

#include "frontends/qt/desktop/desktop.h"
#include "frontends/qt/desktop/window_states.h"
#include "frontends/qt/event_loop.h"
#include "frontends/qt/menu_examples.h"
#include "frontends/qt/popup_menu.h"

namespace {

constexpr int kPanelTop = 600;

/// All tests share it: a program has one display.
Desktop& desktop() {
  static Desktop shared;
  return shared;
}

class MenuOnScreen : public testing::Test {
 protected:
  void SetUp() override {
    if (!desktop().reason().empty()) GTEST_SKIP() << desktop().reason();
    ASSERT_EQ(QGuiApplication::platformName(), "xcb");
    items_ = exampleItems();
    items_[4].live = std::make_shared<LiveTitle>();
    items_[4].live->title = items_[4].title;
    for (int i = 0; i < 60; ++i) items_.push_back(processRow(100 + i, "row " + std::to_string(i)));
    menu_.setMenu(menuOf(items_));
    menu_.openAt({100, 100});
    ASSERT_TRUE(eventually([this] { return menu_.windowHandle()->isExposed(); }));
    ASSERT_LE(menu_.geometry().bottom(), kPanelTop);
    ASSERT_FALSE(isInSight(menu_.actions().back()));
  }

  int arrow() const {
    return menu_.style()->pixelMetric(QStyle::PM_MenuScrollerHeight, nullptr, &menu_);
  }
  bool isInSight(QAction* action) const {
    const QRect row = menu_.actionGeometry(action);
    return row.top() >= (action == menu_.actions().front() ? 0 : arrow()) &&
           row.bottom() < menu_.height() - (action == menu_.actions().back() ? 0 : arrow());
  }
  int scrolled() const { return menu_.actionGeometry(menu_.actions().front()).top(); }

  /// A line inside the menu that opens nothing.
  int textLine() const {
    return menu_.mapToGlobal(menu_.actionGeometry(menu_.actions()[1]).center()).y();
  }
  /// With the pointer, across the place, as Qt takes the first move for none.
  void pointAt(int y) const {
    const int x = menu_.geometry().center().x();
    desktop().pointAt(x - 5, y);
    desktop().pointAt(x, y);
    wait(50);
  }
  static void wait(int milliseconds) {
    QEventLoop loop;
    QTimer::singleShot(milliseconds, &loop, &QEventLoop::quit);
    loop.exec();
  }

  std::vector<MenuItem> items_;
  PopupMenu menu_;
};

TEST_F(MenuOnScreen, StaysClearOfThePanelWhileItChanges) {
  const QRect before = menu_.geometry();
  items_[0].strip->pressure = 0.9;
  menu_.refreshStrip();
  settle();
  EXPECT_EQ(menu_.geometry(), before) << "after the strip has changed";
  items_[4].live->title = "changed";
  menu_.refreshTitles();
  settle();
  EXPECT_EQ(menu_.geometry(), before) << "after a title has changed";
  items_[3].title += " (changed)";
  menu_.setMenu(menuOf(items_));
  EXPECT_TRUE(eventually([&] { return menu_.geometry().bottom() <= kPanelTop; }))
      << "after a row has changed: " << menu_.geometry().bottom();
  pointAt(textLine());
  pointAt(menu_.geometry().bottom() - 3);
  EXPECT_TRUE(eventually([&] { return scrolled() < 0; })) << "the rest can be scrolled to";
}

TEST_F(MenuOnScreen, OpensBesideThePanelThatItsIconIsIn) {
  menu_.hide();
  PopupMenu menu;
  menu.setMenu(menuOf(exampleItems()));
  menu.openAt({100, kPanelTop + 20});
  EXPECT_EQ(menu.geometry().bottom(), kPanelTop - 1);
  EXPECT_EQ(menu.geometry().left(), 100);
  menu.hide();
  menu.openAt({100, 100});
  EXPECT_EQ(menu.pos(), QPoint(100, 100)) << "where no panel is";
}

TEST_F(MenuOnScreen, ScrollsWhereThePanelAloneIsInTheWay) {
  menu_.hide();
  PopupMenu menu;
  menu.setMenu(menuOf(items_));
  // As many rows as the screen has room for: their height is the font's.
  while (menu.sizeHint().height() >= menu.screen()->geometry().height() && !items_.empty()) {
    items_.pop_back();
    menu.setMenu(menuOf(items_));
  }
  ASSERT_GT(menu.sizeHint().height(), kPanelTop);
  menu.openAt({100, 100});
  ASSERT_TRUE(eventually([&] { return menu.windowHandle()->isExposed(); }));
  EXPECT_EQ(menu.geometry().bottom(), kPanelTop - 1);
  EXPECT_EQ(menu.activeAction(), nullptr);
  desktop().pointAt(150, kPanelTop - 8);
  desktop().pointAt(155, kPanelTop - 3);
  EXPECT_TRUE(eventually([&] { return menu.actionGeometry(menu.actions().front()).top() < 0; }));
}

TEST_F(MenuOnScreen, ScrollsOnlyWithThePointerInside) {
  const int before = scrolled();
  pointAt(textLine());
  pointAt(kPanelTop + 20);
  wait(300);  // Qt scrolls 50 milliseconds later
  EXPECT_EQ(scrolled(), before);
  EXPECT_TRUE(menu_.isVisible());
  pointAt(menu_.geometry().bottom() - 3);
  EXPECT_TRUE(eventually([&] { return scrolled() != before; }));
}

TEST_F(MenuOnScreen, RowChosenByKeysIsInSightWhereverThePointerRests) {
  pointAt(textLine());
  pointAt(kPanelTop + 20);
  for (const char* key : {"Down", "Up"}) {
    for (int i = 0; i < 40; ++i) {
      const QAction* before = menu_.activeAction();
      desktop().press({key});
      ASSERT_TRUE(eventually([&] {
        return menu_.activeAction() != before && isInSight(menu_.activeAction());
      })) << key
          << " " << i;
    }
  }
}

TEST_F(MenuOnScreen, RowsHaveOneHeight) {
  // Lower than a dot, as on many desktops.
  QFont low = menu_.font();
  low.setPixelSize(8);
  menu_.setFont(low);
  settle();
  for (QAction* action : menu_.actions()) {
    const bool isOrdinary = !action->isSeparator() && action != menu_.actions().front();
    if (!isOrdinary) continue;
    EXPECT_EQ(menu_.actionGeometry(action).height(),
              menu_.actionGeometry(menu_.actions()[1]).height())
        << action->text().toStdString();
  }
}

}  // namespace

int main(int argc, char** argv) {
  testing::InitGoogleTest(&argc, argv);
  std::unique_ptr<QApplication> application;
  if (desktop().reason().empty()) {
    leaveRoomForPanel(desktop().display(), kPanelTop);
    qputenv("DISPLAY", desktop().display().c_str());
    qputenv("QT_QPA_PLATFORM", "xcb");
    qputenv("DBUS_SESSION_BUS_ADDRESS", "disabled:");
    // On Plasma Qt lets menus cover panels, elsewhere it does not.
    qputenv("QT_QPA_PLATFORMTHEME", "kde");
    qputenv("KDE_SESSION_VERSION", "5");
    for (const char* name : {"WAYLAND_DISPLAY", "XDG_CURRENT_DESKTOP"}) qunsetenv(name);
    application = std::make_unique<QApplication>(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
  }
  return RUN_ALL_TESTS();
}
