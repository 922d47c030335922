// Where the program is seen, and that it always is.
#include "frontends/qt/desktop/starting_window_manager.h"
#include "frontends/qt/desktop/tray_test.h"
#include "frontends/qt/desktop/window_states.h"

namespace {

using IconOrWindow = TrayTest;

TEST_F(IconOrWindow, HostGetsTheIcon) {
  startInTray();
  EXPECT_TRUE(host->isOwned(host->icon()));
  EXPECT_TRUE(host->toolTip().starts_with("Vorda"));
  EXPECT_TRUE(host->toolTip().ends_with("\nHalvek"));
  EXPECT_TRUE(host->title().starts_with("Vorda² — Memory "));
  EXPECT_FALSE(desktop.showsWindow(kWindow));
}

TEST_F(IconOrWindow, HostThatNeverSaysThatItOpensTheMenuGetsAUsableOne) {
  startInTray();
  const HostItem menu = host->layout();
  EXPECT_TRUE(menu.children.front().label.ends_with("%"));
  EXPECT_TRUE(menu.children[1].label.starts_with("System  "));
  EXPECT_NE(findItem(menu, "Refresh now"), nullptr);
  EXPECT_NE(findItem(menu, "Quit Vorda"), nullptr);
}

TEST_F(IconOrWindow, WithoutAHostTheWindowIsThere) {
  startWithoutTray();
}

TEST_F(IconOrWindow, WindowThatAStartingWindowManagerMissedIsShownAllTheSame) {
  {
    StartingWindowManager manager(desktop.display());
    program = desktop.startProgram();
    ASSERT_TRUE(manager.losesAWindow());
  }
  EXPECT_TRUE(windowAppears(kWindow));
}

TEST_F(IconOrWindow, HostThatComesLaterGetsTheIconAndTheWindowGoes) {
  startWithoutTray();
  host->appear();
  EXPECT_TRUE(host->eventually([this] { return !host->icon().empty(); }));
  EXPECT_TRUE(windowGoes(kWindow));
}

TEST_F(IconOrWindow, HostThatGoesGivesTheWindowBack) {
  startInTray();
  host->disappear();
  EXPECT_TRUE(windowAppears(kWindow));
  host->appear();
  EXPECT_TRUE(host->eventually([this] { return !host->icon().empty(); }));
  EXPECT_TRUE(windowGoes(kWindow));
}

TEST_F(IconOrWindow, WatcherWithoutAHostIsNoTray) {
  host->setHostRegistered(false);
  host->appear();
  startWithoutTray();
  EXPECT_EQ(host->icon(), "");
  host->setHostRegistered(true);
  EXPECT_TRUE(host->eventually([this] { return !host->icon().empty(); }));
  EXPECT_TRUE(windowGoes(kWindow));
}

TEST_F(IconOrWindow, SecondWatcherTakesOver) {
  startInTray();
  TrayHost second(desktop.busAddress());
  second.appear();
  host->disappear();
  EXPECT_TRUE(second.eventually([&second] { return !second.icon().empty(); }));
  EXPECT_TRUE(second.eventually([this] { return !desktop.showsWindow(kWindow); }));
}

TEST_F(IconOrWindow, WatcherThatNeverAnswersIsNotWaitedFor) {
  host->appear();
  program = desktop.startProgram();
  // Nobody works off the watcher's calls meanwhile.
  EXPECT_TRUE(desktop.eventuallyShowsWindow(kWindow));
  EXPECT_TRUE(windowGoes(kWindow));
}

TEST_F(IconOrWindow, WindowOpensTheMenuAndSettings) {
  startWithoutTray();
  // Nobody manages windows here: a click gives the keyboard.
  desktop.clickInto(kWindow);
  desktop.press({"space"});
  EXPECT_TRUE(windowAppears(kMenu));
  desktop.press({"Escape"});
  EXPECT_TRUE(windowGoes(kMenu));
  desktop.press({"ctrl+comma"});
  EXPECT_TRUE(windowAppears(kSettings));
}

TEST_F(IconOrWindow, SecondStartShowsSettingsAndEnds) {
  startInTray();
  const std::string icon = host->icon();
  const auto second = desktop.startProgram();
  int status = -1;
  EXPECT_TRUE(host->eventually([&second, &status] {
    const auto ended = second->poll();
    status = ended.value_or(-1);
    return ended.has_value();
  }));
  EXPECT_EQ(status, 0);
  EXPECT_TRUE(windowAppears(kSettings));
  EXPECT_EQ(host->icon(), icon);

  desktop.press({"Escape"});
  EXPECT_TRUE(windowGoes(kSettings));
  EXPECT_TRUE(host->isOwned(icon));
  EXPECT_EQ(program->poll(), std::nullopt);
}

TEST_F(IconOrWindow, SettingsOpenAtOnceForTheActionOfTheDesktopEntry) {
  host->appear();
  program = desktop.startProgram({}, {"--settings"});
  EXPECT_TRUE(windowAppears(kSettings));
  EXPECT_TRUE(host->eventually([this] { return !host->icon().empty(); }));
}

TEST_F(IconOrWindow, WindowThatWasPutAwayComesBackWithTheNextStart) {
  startWithoutTray();
  closeWindow(desktop.display(), kWindow);
  ASSERT_TRUE(windowGoes(kWindow));
  EXPECT_EQ(program->poll(), std::nullopt);
  const auto second = desktop.startProgram();
  EXPECT_TRUE(windowAppears(kWindow));
  EXPECT_EQ(second->wait(), 0);
  EXPECT_FALSE(desktop.showsWindow(kSettings));
  const auto third = desktop.startProgram();
  EXPECT_TRUE(windowAppears(kSettings));
  EXPECT_TRUE(desktop.showsWindow(kWindow));
}

TEST_F(IconOrWindow, OnlySettingsAndWhatReplacesTheIconHaveAPlaceInTheTaskBar) {
  startWithoutTray();
  EXPECT_FALSE(keepsOffTaskbar(desktop.display(), kWindow));
  host->appear();
  ASSERT_TRUE(host->eventually([this] { return !host->icon().empty(); }));

  choose("About Vorda");
  ASSERT_TRUE(windowAppears(kDialog));
  EXPECT_TRUE(keepsOffTaskbar(desktop.display(), kDialog));
  desktop.press({"Escape"});
  ASSERT_TRUE(windowGoes(kDialog));

  const auto second = desktop.startProgram();
  ASSERT_TRUE(windowAppears(kSettings));
  EXPECT_FALSE(keepsOffTaskbar(desktop.display(), kSettings));
}

TEST_F(IconOrWindow, QuitLeavesNothing) {
  startInTray();
  const std::string icon = host->icon();
  choose("Quit Vorda");
  EXPECT_EQ(program->wait(), 0);
  EXPECT_FALSE(host->isOwned(icon));
  EXPECT_FALSE(host->isOwned(kName));
  EXPECT_EQ(program->errorOutput(), "");
}

TEST_F(IconOrWindow, QuitDuringAnAlertEndsBoth) {
  startInTray();
  choose("About Vorda");
  ASSERT_TRUE(windowAppears(kDialog));
  choose("Quit Vorda");
  EXPECT_EQ(program->wait(), 0);
}

}  // namespace
