#include <gtest/gtest.h>

#include <QEventLoop>
#include <QScreen>
#include <QStyle>
#include <QTimer>
#include <QWheelEvent>

#include "frontends/qt/popup_menu_fixture.h"

namespace {

class MenuScrollingTest : public PopupMenuTest {
 protected:
  bool chosenRowIsInSight() const {
    const int arrow = menu.style()->pixelMetric(QStyle::PM_MenuScrollerHeight, nullptr, &menu);
    const QRect row = menu.actionGeometry(menu.activeAction());
    const bool isFirst = menu.activeAction() == menu.actions().front();
    const bool isLast = menu.activeAction() == menu.actions().back();
    return row.top() >= (isFirst ? 0 : arrow) &&
           row.bottom() < menu.height() - (isLast ? 0 : arrow);
  }
};

TEST_F(MenuScrollingTest, ScrollsWhenItIsTooHigh) {
  const std::vector<MenuItem> items(200, exampleItems()[6]);
  menu.setMenu(menuOf(items));
  open();
  EXPECT_EQ(menu.actionGeometry(action(0)).left(), menu.actionGeometry(action(199)).left());
  EXPECT_LE(menu.height(), menu.screen()->geometry().height());
}

std::vector<MenuItem> manyRows() {
  std::vector<MenuItem> items = exampleItems();
  for (int i = 0; i < 60; ++i) items.push_back(processRow(100 + i, "row " + std::to_string(i)));
  return items;
}

void pointAt(QMenu& menu, int y) {
  const QPointF place(menu.width() / 2.0, y);
  QMouseEvent event(QEvent::MouseMove, place, menu.mapToGlobal(place), Qt::NoButton, Qt::NoButton,
                    Qt::NoModifier);
  QCoreApplication::sendEvent(&menu, &event);
}

TEST_F(MenuScrollingTest, ScrollsOnlyWithThePointerInside) {
  menu.setMenu(menuOf(manyRows()));
  open();
  ASSERT_GE(menu.actionGeometry(menu.actions().back()).bottom(), menu.height());
  const int before = menu.actionGeometry(action(0)).top();
  const auto scrolled = [&] { return menu.actionGeometry(action(0)).top() != before; };
  // Qt takes the first move of the pointer for none.
  pointAt(menu, menu.height() / 2);
  pointAt(menu, menu.height() + 20);
  QEventLoop loop;
  QTimer::singleShot(300, &loop, &QEventLoop::quit);  // Qt scrolls 50 milliseconds later
  loop.exec();
  EXPECT_FALSE(scrolled());
  EXPECT_TRUE(menu.isVisible());
  pointAt(menu, menu.height() - 2);
  EXPECT_TRUE(eventually(scrolled));
}

TEST_F(MenuScrollingTest, FitsTheScreenAgainWhenThatChanges) {
  int closings = 0;
  QObject::connect(&menu, &QMenu::aboutToHide, [&closings] { ++closings; });
  open();
  menu.setActiveAction(action(3));
  const QRect screen = menu.screen()->availableGeometry();
  menu.move(screen.bottomRight() - QPoint(30, 30));
  Q_EMIT menu.screen()->availableGeometryChanged(screen);
  settle();
  EXPECT_TRUE(menu.isVisible());
  EXPECT_TRUE(screen.contains(menu.geometry()));
  EXPECT_EQ(menu.activeAction(), action(3));
  EXPECT_EQ(closings, 0);
}

TEST_F(MenuScrollingTest, RowChosenByKeysIsInSight) {
  menu.setMenu(menuOf(manyRows()));
  open();
  for (const int key : {Qt::Key_Down, Qt::Key_Up}) {
    for (int i = 0; i < 70; ++i) {
      press(menu, key);
      ASSERT_TRUE(chosenRowIsInSight()) << key << " " << i;
    }
  }
}

void expectToScroll(QMenu& menu) {
  const auto top = [&menu] { return menu.actionGeometry(menu.actions().front()).top(); };
  const int before = top();
  pointAt(menu, menu.height() / 2);
  pointAt(menu, menu.height() - 2);
  EXPECT_TRUE(eventually([&] { return top() < before; }));
}

TEST_F(MenuScrollingTest, WhatIsLowerThanTheScreenScrollsToo) {
  menu.setMenu(menuOf(manyRows()));
  menu.setMaximumHeight(300);
  open();
  ASSERT_EQ(menu.height(), 300);
  expectToScroll(menu);
  for (int i = 0; i < 70; ++i) {
    press(menu, Qt::Key_Down);
    ASSERT_TRUE(chosenRowIsInSight()) << i;
  }
}

TEST_F(MenuScrollingTest, SubmenuThatIsLowerThanTheScreenScrollsToo) {
  MenuItem more = processRow(99, "more");
  more.submenu = std::vector<MenuItem>(16, processRow(100, "row"));
  menu.setMenu(menuOf({more}));
  QMenu& opened = *submenu(0);
  ASSERT_GT(opened.sizeHint().height(), 300);
  opened.setMaximumHeight(300);
  open();
  menu.setActiveAction(action(0));
  press(menu, Qt::Key_Right);
  ASSERT_EQ(opened.height(), 300);
  expectToScroll(opened);
}

TEST_F(MenuScrollingTest, RowChosenByKeysIsInSightAfterTheWheel) {
  menu.setMenu(menuOf(manyRows()));
  open();
  for (int i = 0; i < 5; ++i) press(menu, Qt::Key_Down);
  for (int i = 0; i < 30; ++i) {
    const QPointF place = menu.rect().center();
    QWheelEvent wheel(place, menu.mapToGlobal(place), {}, {0, -120}, Qt::NoButton, Qt::NoModifier,
                      Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(&menu, &wheel);
  }
  ASSERT_FALSE(chosenRowIsInSight());
  press(menu, Qt::Key_Down);
  EXPECT_TRUE(chosenRowIsInSight());
}

}  // namespace
