#include "frontends/qt/popup_menu.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QPointer>
#include <QTextLayout>
#include <QToolTip>
#include <QWidgetAction>

#include "frontends/qt/accessible_menu.h"
#include "frontends/qt/desktop_colors.h"
#include "frontends/qt/popup_menu_fixture.h"
#include "frontends/qt/strip_widget.h"

namespace {

TEST_F(PopupMenuTest, ShowsEveryItem) {
  ASSERT_EQ(menu.actions().size(), 8);
  EXPECT_EQ(action(1)->text(), "System  10.0 / 16 GB used");
  EXPECT_FALSE(action(1)->isEnabled());
  EXPECT_TRUE(action(2)->isSeparator());
  EXPECT_EQ(action(4)->text(), "train_lora.py  ·  312 MB");
  EXPECT_FALSE(action(4)->icon().isNull());
  EXPECT_TRUE(action(6)->isEnabled());
  EXPECT_TRUE(action(6)->icon().isNull());
}

TEST_F(PopupMenuTest, DisabledItemsCanBeRead) {
  constexpr int kReadable = 128;  // between two shades of grey, 0 to 255
  const std::vector<const QMenu*> menus{&menu, submenu(3)};
  for (const QMenu* shown : menus) {
    const QColor text = shown->palette().color(QPalette::Disabled, QPalette::Text);
    const QColor ground = shown->palette().color(QPalette::Disabled, QPalette::Base);
    EXPECT_GT(std::abs(qGray(text.rgb()) - qGray(ground.rgb())), kReadable);
  }
}

TEST_F(PopupMenuTest, RowsHaveOneHeight) {
  // Lower than a dot, as on many desktops: else all rows are as high as the letters by themselves.
  QFont low = menu.font();
  low.setPixelSize(8);
  menu.setFont(low);
  MenuItem locked = processRow(13, "ollama");
  locked.title += " 🔒";
  menu.setMenu(menuOf({processRow(11, "ollama"), locked, textItem("System"),
                       actionItem("Quit Vorda", Action::quitApp)}));
  open();
  for (int i = 1; i < 4; ++i) {
    EXPECT_EQ(menu.actionGeometry(action(i)).height(), menu.actionGeometry(action(0)).height())
        << menu.actions().at(i)->text().toStdString();
  }
}

TEST_F(PopupMenuTest, FollowsTheColorSchemeWhileOpen) {
  open();
  const auto isReadable = [this](bool dark) {
    for (const QMenu* shown : std::initializer_list<const QMenu*>{&menu, submenu(3)}) {
      const QPalette colors = shown->palette();
      if ((colors.color(QPalette::Base).lightness() < 128) != dark) return false;
      for (const auto group : {QPalette::Active, QPalette::Disabled}) {
        if ((colors.color(group, QPalette::Text).lightness() > 128) != dark) return false;
      }
    }
    return true;
  };
  EXPECT_TRUE(isReadable(false));
  useColors({Appearance::Colors::dark});
  settle();
  EXPECT_TRUE(isReadable(true));
  PopupMenu other;
  EXPECT_LT(other.palette().color(QPalette::Base).lightness(), 128);
  using Colors = Appearance::Colors;
  for (const Colors colors : {Colors::light, Colors::dark, Colors::noPreference}) {
    useColors({colors});
    settle();
    EXPECT_TRUE(isReadable(colors == Colors::dark));
  }
}

TEST_F(PopupMenuTest, HighContrastIsBlackAndWhite) {
  open();
  for (const auto colors : {Appearance::Colors::light, Appearance::Colors::dark}) {
    useColors({colors, true});
    settle();
    const bool dark = colors == Appearance::Colors::dark;
    for (const QMenu* shown : std::initializer_list<const QMenu*>{&menu, submenu(3)}) {
      const QPalette palette = shown->palette();
      for (const auto group : {QPalette::Active, QPalette::Disabled}) {
        EXPECT_EQ(palette.color(group, QPalette::Text), dark ? Qt::white : Qt::black);
        EXPECT_EQ(palette.color(group, QPalette::Base), dark ? Qt::black : Qt::white);
        EXPECT_EQ(palette.color(group, QPalette::Window), dark ? Qt::black : Qt::white);
      }
    }
  }
  useColors({});
  settle();
  EXPECT_NE(menu.palette().color(QPalette::Disabled, QPalette::Text), Qt::black);
}

TEST_F(PopupMenuTest, FollowsTheColorsThatTheDesktopTells) {
  open();
  const QPalette green(QColor(0x10, 0x40, 0x10), QColor(0x20, 0x60, 0x20));
  useColors({Appearance::Colors::light}, green);
  settle();
  EXPECT_EQ(menu.palette().color(QPalette::Window), green.color(QPalette::Window));
  useColors({});
  settle();
  EXPECT_NE(menu.palette().color(QPalette::Window), green.color(QPalette::Window));
}

TEST_F(PopupMenuTest, FromRightToLeftSubmenusOpenToTheLeft) {
  QApplication::setLayoutDirection(Qt::RightToLeft);
  menu.popup({500, 100});
  settle();
  press(menu, Qt::Key_Down);
  press(menu, Qt::Key_Left);
  const QPoint at = submenu(3)->geometry().center();
  const bool isOpen = submenu(3)->isVisible();
  QApplication::setLayoutDirection(Qt::LeftToRight);
  EXPECT_TRUE(isOpen);
  EXPECT_LT(at.x(), menu.geometry().center().x());
}

TEST_F(PopupMenuTest, FromRightToLeftRowsReadAsTheyAreWritten) {
  QApplication::setLayoutDirection(Qt::RightToLeft);
  PopupMenu turned;
  turned.setMenu(menuOf({textItem("1.01 GB · pid 77"), processRow(11, "★ last")}));
  QApplication::setLayoutDirection(Qt::LeftToRight);
  for (const QAction* row : turned.actions()) {
    QTextLayout line(row->text(), turned.font());
    QTextOption option;
    option.setTextDirection(Qt::RightToLeft);
    line.setTextOption(option);
    line.beginLayout();
    QTextLine drawn = line.createLine();
    line.endLayout();
    const int last = static_cast<int>(row->text().size()) - 1;
    for (int i = 3; i < last; ++i) {
      EXPECT_GT(drawn.cursorToX(i), drawn.cursorToX(i - 1))
          << row->text().toStdString() << " at " << i;
    }
  }
}

TEST_F(PopupMenuTest, SubmenusAreFull) {
  ASSERT_NE(submenu(3), nullptr);
  ASSERT_EQ(submenu(3)->actions().size(), 4);
  EXPECT_EQ(submenu(3)->actions()[2]->text(), "Quit");
  EXPECT_EQ(submenu(6), nullptr);
}

TEST_F(PopupMenuTest, RowKeepsItsPlaceWhenItOffersSomethingElse) {
  auto items = exampleItems();
  const QPointer<QAction> row = action(3);
  items[3].submenu.erase(items[3].submenu.begin() + 2);
  menu.setMenu(menuOf(items));
  EXPECT_EQ(action(3), row);
  ASSERT_EQ(submenu(3)->actions().size(), 3);
  EXPECT_EQ(submenu(3)->actions()[2]->text(), "Full details…");
  items[3].submenu.clear();
  menu.setMenu(menuOf(items));
  EXPECT_EQ(action(3), row);
  EXPECT_EQ(submenu(3), nullptr);
}

TEST_F(PopupMenuTest, StripStandsOnTopAsAWidget) {
  open();
  auto* widget = static_cast<QWidgetAction*>(action(0))->defaultWidget();
  ASSERT_NE(widget, nullptr);
  EXPECT_TRUE(widget->isVisible());
  EXPECT_GE(widget->width(), StripWidget::kWidth);
  EXPECT_EQ(widget->height(), StripWidget::kHeight);
  EXPECT_EQ(widget->accessibleName(), "Memory 62 percent used");
}

TEST_F(PopupMenuTest, StripIsDrawnAnewOnRequest) {
  const auto items = exampleItems();
  menu.setMenu(menuOf(items));
  items[0].strip->pressure = 0.9;
  menu.refreshStrip();
  EXPECT_EQ(static_cast<QWidgetAction*>(action(0))->defaultWidget()->accessibleName(),
            "Memory 90 percent used");
}

TEST_F(PopupMenuTest, ClickChoosesAndCloses) {
  open();
  click(action(7));
  EXPECT_EQ(chosen, std::vector<std::string>{"Quit Vorda"});
  EXPECT_FALSE(menu.isVisible());
}

TEST_F(PopupMenuTest, ChoiceInASubmenuIsReportedOnce) {
  submenu(3)->actions()[2]->trigger();
  EXPECT_EQ(chosen, std::vector<std::string>{"Quit"});
}

TEST_F(PopupMenuTest, ChosenItemMeansWhatItMeantWhenItWasShown) {
  std::shared_ptr<const MenuItem> meant;
  QObject::connect(&menu, &PopupMenu::chosen,
                   [&meant](std::shared_ptr<const MenuItem> item) { meant = std::move(item); });
  submenu(4)->actions()[2]->trigger();
  menu.setMenu(menuOf({}));
  ASSERT_NE(meant, nullptr);
  EXPECT_EQ(std::get<std::int32_t>(meant->representedObject), 12);
  EXPECT_EQ(meant->process->pid, 12);
}

TEST_F(PopupMenuTest, ClickOnALineChoosesNothing) {
  open();
  click(action(1));
  EXPECT_TRUE(chosen.empty());
  EXPECT_TRUE(menu.isVisible());
}

TEST_F(PopupMenuTest, RefreshNowLeavesItOpen) {
  open();
  click(action(6));
  EXPECT_EQ(chosen, std::vector<std::string>{"Refresh now"});
  EXPECT_TRUE(menu.isVisible());
}

TEST_F(PopupMenuTest, RefreshNowByKeyboardLeavesItOpen) {
  open();
  menu.setActiveAction(action(6));
  press(menu, Qt::Key_Return);
  EXPECT_EQ(chosen, std::vector<std::string>{"Refresh now"});
  EXPECT_TRUE(menu.isVisible());
}

TEST_F(PopupMenuTest, KeyboardWalksOpensASubmenuAndChooses) {
  open();
  press(menu, Qt::Key_Down);
  EXPECT_EQ(menu.activeAction(), action(3));
  press(menu, Qt::Key_Right);
  ASSERT_TRUE(submenu(3)->isVisible());
  press(*submenu(3), Qt::Key_Return);
  EXPECT_EQ(chosen, std::vector<std::string>{"Quit"});
  EXPECT_FALSE(menu.isVisible());
}

TEST_F(PopupMenuTest, EscapeClosesWithoutAChoice) {
  open();
  press(menu, Qt::Key_Escape);
  EXPECT_FALSE(menu.isVisible());
  EXPECT_TRUE(chosen.empty());
}

TEST_F(PopupMenuTest, ControlCommaAsksForSettings) {
  int requests = 0;
  QObject::connect(&menu, &PopupMenu::settingsRequested, [&requests] { ++requests; });
  open();
  press(menu, Qt::Key_Comma, Qt::ControlModifier);
  EXPECT_EQ(requests, 1);
  EXPECT_FALSE(menu.isVisible());
}

TEST_F(PopupMenuTest, NewItemsLeaveAnOpenMenuOpen) {
  open();
  menu.setMenu(menuOf(
      {stripItem(0.5), processRow(13, "new"), actionItem("Refresh now", Action::refreshNow)}));
  settle();
  EXPECT_TRUE(menu.isVisible());
  ASSERT_EQ(menu.actions().size(), 3);
  EXPECT_EQ(action(1)->text(), "new  ·  312 MB");
}

TEST_F(PopupMenuTest, SameProcessKeepsItsRowAndItsOpenSubmenu) {
  open();
  QAction* row = action(4);
  menu.setActiveAction(row);
  press(menu, Qt::Key_Right);
  ASSERT_TRUE(row->menu()->isVisible());
  menu.setMenu(menuOf({stripItem(0.5), processRow(12, "train_lora.py", 1, "4.1 GB")}));
  settle();
  EXPECT_EQ(action(1), row);
  EXPECT_EQ(row->text(), "train_lora.py  ·  4.1 GB");
  EXPECT_TRUE(row->menu()->isVisible());
}

TEST_F(PopupMenuTest, RowNeverComesToMeanAnotherProcess) {
  const QPointer<QAction> row = action(3);
  menu.setMenu(menuOf({processRow(11, "ollama", 2)}));
  settle();
  EXPECT_TRUE(row.isNull());
}

TEST_F(PopupMenuTest, RefreshNowStaysUnderThePointer) {
  open();
  menu.setActiveAction(action(6));
  const auto place = [this](int index) {
    return menu.mapToGlobal(menu.actionGeometry(action(index)).topLeft());
  };
  const QPoint before = place(6);
  std::vector<MenuItem> fewer = exampleItems();
  fewer.erase(fewer.begin() + 3);
  menu.setMenu(menuOf(fewer));
  EXPECT_EQ(place(5), before);
}

TEST_F(PopupMenuTest, RowsShowTheirToolTipAfterAWhile) {
  open();
  menu.setActiveAction(action(3));
  action(3)->hover();
  EXPECT_TRUE(eventually([] { return QToolTip::isVisible(); }));
  EXPECT_TRUE(QToolTip::text().contains("ollama<br>Owner: ada"));
  QToolTip::hideText();
}

TEST_F(PopupMenuTest, AHundredThousandCharactersFitTheScreen) {
  menu.setMenu(menuOf({processRow(11, std::string(100000, 'x'))}));
  open();
  EXPECT_LT(menu.width(), 4000);
}

TEST_F(PopupMenuTest, WhatRowsShareIsMadeWhenItOpens) {
  MenuItem row = processRow(11, "torchrun");
  row.submenu = {actionItem("Its 2 processes…", Action::openRow)};
  row.submenu[0].opens = std::make_shared<const std::vector<MenuItem>>(
      std::vector{processRow(12, "rank"), processRow(13, "rank")});
  menu.setMenu(menuOf({row}));
  open();
  press(menu, Qt::Key_Down);
  press(menu, Qt::Key_Right);
  QMenu* const members = submenu(0)->actions()[0]->menu();
  ASSERT_NE(members, nullptr);
  EXPECT_TRUE(members->actions().isEmpty());
  press(*submenu(0), Qt::Key_Right);
  ASSERT_TRUE(members->isVisible());
  ASSERT_EQ(members->actions().size(), 2);
  EXPECT_EQ(members->actions()[1]->text(), "rank  ·  312 MB");
  press(*members, Qt::Key_Right);
  press(*members->actions()[0]->menu(), Qt::Key_Return);
  EXPECT_EQ(chosen, std::vector<std::string>{"Quit"});
}

TEST_F(PopupMenuTest, TellsWhichSubmenuOpensAndShowsItsNewTitle) {
  const auto shown = menuOf({rowWithLiveTitle(11, "up to 3 GB"), processRow(12, "ollama")});
  menu.setMenu(shown);
  std::vector<std::string> opened;
  QObject::connect(
      &menu, &PopupMenu::submenuOpening,
      [&](const std::shared_ptr<const MenuItem>& row) { opened.push_back(row->title); });
  open();
  submenu(0)->popup({300, 100});
  settle();
  EXPECT_EQ(opened, std::vector<std::string>{"torchrun  ·  312 MB"});
  QAction* const line = submenu(0)->actions().front();
  EXPECT_EQ(line->text(), "up to 3 GB");
  shown->items.front().submenu.front().live->title = "2 GB";
  menu.refreshTitles();
  EXPECT_EQ(line->text(), "2 GB");
  EXPECT_EQ(line->property(kSpokenName), "2 GB");
  EXPECT_TRUE(submenu(0)->isVisible());
}

}  // namespace
