#include "frontends/qt/qt_front_end.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QApplication>
#include <QKeyEvent>
#include <QPushButton>
#include <algorithm>

#include "frontends/qt/alert_dialog.h"
#include "frontends/qt/event_loop.h"
#include "frontends/qt/menu_examples.h"
#include "frontends/qt/menu_window.h"
#include "frontends/qt/popup_menu.h"
#include "frontends/qt/recording_delegate.h"

namespace {

using Calls = std::vector<std::string>;

const MenuItem kAbout = actionItem("About Vorda", Action::about);
const MenuItem kQuit = actionItem("Quit Vorda", Action::quitApp);

template <typename Widget>
Widget* shown() {
  for (QWidget* widget : QApplication::topLevelWidgets()) {
    auto* found = dynamic_cast<Widget*>(widget);
    if (found != nullptr && found->isVisible()) return found;
  }
  return nullptr;
}

/// Without a session bus: the small window stands for the icon.
class QtFrontEndTest : public testing::Test {
 protected:
  QtFrontEndTest() : frontEnd(NamedBus{}, {{"Vorda"}}) {
    frontEnd.setTitle("Vorda²");
    frontEnd.menuRebuilt(menuOf(exampleItems()));
    frontEnd.reportTo(&delegate);
    settle();
  }

  static void clickTheButton() {
    shown<MenuWindow>()->findChild<QPushButton*>()->click();
    settle();
  }

  /// Chooses an item of the open menu by keyboard.
  static void choose(const QString& title) {
    auto* menu = shown<PopupMenu>();
    for (QAction* action : menu->actions()) {
      if (action->text() == title) menu->setActiveAction(action);
    }
    QKeyEvent press(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier);
    QApplication::sendEvent(menu, &press);
  }

  /// What stands in the open menu, line by line.
  static QStringList openMenu() {
    QStringList titles;
    for (const QAction* action : shown<PopupMenu>()->actions()) titles << action->text();
    return titles;
  }

  RecordingDelegate delegate;
  QtFrontEnd frontEnd;
};

TEST_F(QtFrontEndTest, IsVisibleWithoutATray) {
  ASSERT_NE(shown<MenuWindow>(), nullptr);
  EXPECT_EQ(shown<MenuWindow>()->windowTitle(), "Vorda²");
}

TEST_F(QtFrontEndTest, MenuIsBroughtUpToDateBeforeItOpens) {
  delegate.onNeedsUpdate = [this] { frontEnd.menuRebuilt(menuOf({processRow(13, "new")})); };
  clickTheButton();
  EXPECT_EQ(delegate.calls, (Calls{"needsUpdate", "willOpen"}));
  EXPECT_EQ(openMenu(), QStringList("new  ·  312 MB"));
}

TEST_F(QtFrontEndTest, ButtonClosesAnOpenMenu) {
  clickTheButton();
  clickTheButton();
  EXPECT_EQ(shown<PopupMenu>(), nullptr);
  EXPECT_EQ(delegate.calls.back(), "didClose");
}

TEST_F(QtFrontEndTest, ChoiceIsPerformedAfterTheMenuHasClosed) {
  clickTheButton();
  delegate.calls.clear();
  choose("Quit Vorda");
  settle();
  EXPECT_EQ(delegate.calls, (Calls{"didClose", "perform Quit Vorda"}));
}

TEST_F(QtFrontEndTest, RefreshNowFillsTheOpenMenuAnew) {
  delegate.onPerform = [this](const MenuItem&) {
    frontEnd.menuRebuilt(menuOf({processRow(13, "new")}));
  };
  clickTheButton();
  choose("Refresh now");
  settle();
  ASSERT_NE(shown<PopupMenu>(), nullptr);
  EXPECT_EQ(openMenu(), QStringList("new  ·  312 MB"));
}

TEST_F(QtFrontEndTest, CancelTrackingClosesTheMenu) {
  clickTheButton();
  frontEnd.cancelTracking();
  settle();
  EXPECT_EQ(shown<PopupMenu>(), nullptr);
  EXPECT_EQ(delegate.calls, (Calls{"needsUpdate", "willOpen", "didClose"}));
}

TEST_F(QtFrontEndTest, AlertWaitsForItsAnswer) {
  frontEnd.after(0, [] { shown<AlertDialog>()->findChildren<QPushButton*>()[1]->click(); });
  EXPECT_EQ(frontEnd.runModal({.messageText = "Sure?", .buttons = {"Yes", "Cancel"}}),
            kAlertFirstButtonReturn + 1);
  EXPECT_EQ(shown<AlertDialog>(), nullptr);
}

TEST_F(QtFrontEndTest, TimersGoOnDuringAnAlert) {
  int ticks = 0;
  const auto timer = frontEnd.every(0.001, [&ticks] {
    if (++ticks == 5) shown<AlertDialog>()->reject();
  });
  EXPECT_EQ(frontEnd.runModal({.messageText = "Failed"}), kAlertDismissed);
  timer->cancel();
}

TEST_F(QtFrontEndTest, MenuDoesNotOpenDuringAnAlert) {
  frontEnd.after(0, [] {
    Q_EMIT shown<MenuWindow>()->menuRequested();
    settle();
    EXPECT_EQ(shown<PopupMenu>(), nullptr);
    shown<AlertDialog>()->reject();
  });
  frontEnd.runModal({.messageText = "Failed"});
  EXPECT_TRUE(delegate.calls.empty());
}

TEST_F(QtFrontEndTest, OnlyQuittingIsPerformedDuringAnAlert) {
  clickTheButton();
  PopupMenu* menu = shown<PopupMenu>();
  delegate.onPerform = [this](const MenuItem& item) {
    if (item.action == Action::about) frontEnd.runModal({.messageText = "About"});
  };
  Q_EMIT menu->chosen(std::make_shared<const MenuItem>(kAbout));
  Q_EMIT menu->chosen(std::make_shared<const MenuItem>(kAbout));
  Q_EMIT menu->chosen(std::make_shared<const MenuItem>(kQuit));
  frontEnd.after(0.05, [] { shown<AlertDialog>()->reject(); });
  settle();
  EXPECT_EQ(std::count(delegate.calls.begin(), delegate.calls.end(), "perform About Vorda"), 1);
  EXPECT_THAT(delegate.calls, testing::Contains("perform Quit Vorda"));
}

TEST_F(QtFrontEndTest, SettingsOpenOnceAndCloseWithoutEnding) {
  frontEnd.showSettings();
  frontEnd.showSettings();
  ASSERT_NE(shown<SettingsWindow>(), nullptr);
  shown<SettingsWindow>()->close();
  settle();
  EXPECT_EQ(shown<SettingsWindow>(), nullptr);
  EXPECT_NE(shown<MenuWindow>(), nullptr);
  frontEnd.showSettings();
  EXPECT_NE(shown<SettingsWindow>(), nullptr);
}

TEST_F(QtFrontEndTest, TerminateEndsTheProgramWithoutAnError) {
  frontEnd.after(0, [this] { frontEnd.terminate(); });
  EXPECT_EQ(QApplication::exec(), 0);
}

TEST_F(QtFrontEndTest, TerminateDuringAnAlertEndsTheAlertToo) {
  frontEnd.after(0, [this] {
    EXPECT_EQ(frontEnd.runModal({.messageText = "x", .buttons = {"Yes", "No"}}), kAlertDismissed);
  });
  frontEnd.after(0.02, [this] { frontEnd.terminate(); });
  EXPECT_EQ(QApplication::exec(), 0);
}

TEST_F(QtFrontEndTest, ClosingTheOnlyWindowPutsItAwayAndTheProgramGoesOn) {
  bool wentOn = false;
  frontEnd.after(0, [] { shown<MenuWindow>()->close(); });
  frontEnd.after(0.05, [&] {
    wentOn = true;
    QApplication::exit(0);
  });
  EXPECT_EQ(QApplication::exec(), 0);
  EXPECT_TRUE(wentOn);
  EXPECT_EQ(shown<MenuWindow>(), nullptr);
}

/// A row as a short menu has it.
MenuItem rowThatOpens(std::int32_t pid, const std::string& name) {
  MenuItem row = processRow(pid, name);
  row.action = Action::openRow;
  return row;
}

TEST_F(QtFrontEndTest, RowOfAShortMenuOpensAMenuOfItsOwn) {
  const MenuItem row = rowThatOpens(11, "ollama");
  clickTheButton();
  Q_EMIT shown<PopupMenu>()->chosen(std::make_shared<const MenuItem>(row));
  settle();
  ASSERT_NE(shown<PopupMenu>(), nullptr);
  EXPECT_EQ(openMenu(), (QStringList{"ollama  ·  312 MB", "312 MB", "", "Quit", "Full details…"}));
  // What is found meanwhile is no news for it.
  frontEnd.menuRebuilt(menuOf({processRow(13, "new")}));
  EXPECT_EQ(openMenu().front(), "ollama  ·  312 MB");

  choose("Quit");
  settle();
  EXPECT_EQ(shown<PopupMenu>(), nullptr);
  EXPECT_EQ(delegate.calls.back(), "perform Quit");
  clickTheButton();
  EXPECT_EQ(openMenu(), QStringList("new  ·  312 MB"));
}

TEST_F(QtFrontEndTest, OpenVordaOpensTheWholeMenu) {
  const MenuItem open = actionItem("Open Vorda…", Action::openMenu);
  const MenuItem row = rowThatOpens(11, "ollama");
  clickTheButton();
  const QStringList whole = openMenu();
  Q_EMIT shown<PopupMenu>()->chosen(std::make_shared<const MenuItem>(row));
  settle();
  ASSERT_NE(openMenu(), whole);
  Q_EMIT shown<PopupMenu>()->chosen(std::make_shared<const MenuItem>(open));
  settle();
  EXPECT_EQ(openMenu(), whole);
  EXPECT_EQ(std::count(delegate.calls.begin(), delegate.calls.end(), "perform Open Vorda…"), 0);
}

TEST_F(QtFrontEndTest, StripInTheWindowMoves) {
  const auto menu = menuOf(exampleItems());
  frontEnd.menuRebuilt(menu);
  menu->items[0].strip->pressure = 0.9;
  frontEnd.stripChanged(*menu->items[0].strip);
  const auto children = shown<MenuWindow>()->findChildren<QWidget*>();
  EXPECT_TRUE(std::any_of(children.begin(), children.end(), [](const QWidget* child) {
    return child->accessibleName() == "Memory 90 percent used";
  }));
}

TEST_F(QtFrontEndTest, GoesWithItsMenuOpen) {
  clickTheButton();
}

using Shown = MenuTracking::Shown;

class MenuTrackingTest : public testing::Test {
 protected:
  MenuTrackingTest() { tracking.reportTo(&delegate); }

  RecordingDelegate delegate;
  MenuTracking tracking;
};

TEST_F(MenuTrackingTest, UpdatesBeforeItOpens) {
  tracking.begin(Shown::popup);
  EXPECT_EQ(delegate.calls, (Calls{"needsUpdate", "willOpen"}));
}

TEST_F(MenuTrackingTest, ClosesOnce) {
  tracking.begin(Shown::popup);
  delegate.calls.clear();
  tracking.end(Shown::popup);
  tracking.end(Shown::popup);
  EXPECT_EQ(delegate.calls, Calls{"didClose"});
}

TEST_F(MenuTrackingTest, OpeningTheOtherMenuClosesTheFirst) {
  tracking.begin(Shown::hostMenu);
  delegate.calls.clear();
  tracking.begin(Shown::popup);
  EXPECT_EQ(delegate.calls, (Calls{"didClose", "needsUpdate", "willOpen"}));
  delegate.calls.clear();
  tracking.end(Shown::hostMenu);
  EXPECT_TRUE(delegate.calls.empty()) << "the popup is the one that is open";
  tracking.end(Shown::popup);
  EXPECT_EQ(delegate.calls, Calls{"didClose"});
}

TEST_F(MenuTrackingTest, TellsNobodyWhenThereIsNobody) {
  tracking.reportTo(nullptr);
  tracking.begin(Shown::popup);
  tracking.end(Shown::popup);
  EXPECT_TRUE(delegate.calls.empty());
}

}  // namespace
