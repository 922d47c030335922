// What the program makes of tray hosts that signal without end, or can't scroll.
#include <algorithm>
#include <chrono>

#include "frontends/qt/desktop/tray_test.h"

namespace {

using TrayHosts = TrayTest;
using std::chrono::duration_cast;
using std::chrono::milliseconds;
using std::chrono::steady_clock;

TEST_F(TrayHosts, GetTheIconByItsUniqueNameAlone) {
  startInTray();
  EXPECT_TRUE(host->icon().starts_with(":")) << host->icon();
  // Under a name as well, GNOME's extension would show a second icon.
  EXPECT_NE(host->owner(kName), host->icon());
}

TEST_F(TrayHosts, ThatSignalWithoutEndAreAskedOnceInAWhile) {
  startInTray();
  const int looksBefore = host->looks();
  const auto start = steady_clock::now();
  for (int round = 0; round < 100; ++round) {
    host->signalNothing(100);
    host->pumpFor(0.01);
  }
  EXPECT_TRUE(host->eventually([&] { return host->looks() > looksBefore; }));
  const auto passed = duration_cast<milliseconds>(steady_clock::now() - start).count();
  EXPECT_LE(host->looks(), looksBefore + passed / 100 + 2) << passed << " ms";
  EXPECT_FALSE(desktop.showsWindow(kWindow));
}

TEST_F(TrayHosts, ThatCannotScrollGetAShortMenu) {
  host->takeName("org.gnome.Shell");
  host->appear();
  program = desktop.startProgram();
  ASSERT_TRUE(host->eventually([this] { return !host->icon().empty(); }));
  const HostItem menu = host->layout();
  EXPECT_EQ(menu.children[1].label, "Open Vorda…");
  EXPECT_EQ(findItem(menu, "Refresh now"), nullptr);
  EXPECT_NE(findItem(menu, "Quit Vorda"), nullptr);
  EXPECT_LE(menu.children.size(), 17U);
  for (const HostItem& section : menu.children) {
    EXPECT_LE(section.children.size(), 8U);
    for (const HostItem& row : section.children) EXPECT_TRUE(row.children.empty());
  }
}

TEST_F(TrayHosts, BesideGnomeShellGetTheWholeMenu) {
  TrayHost shell(desktop.busAddress());
  startInTray();
  host->disappear();
  shell.takeName("org.gnome.Shell");
  shell.appear();
  ASSERT_TRUE(shell.eventually([&shell] { return !shell.icon().empty(); }));
  EXPECT_NE(findItem(shell.layout(), "Open Vorda…"), nullptr);

  TrayHost other(desktop.busAddress());
  other.appear();
  shell.disappear();
  ASSERT_TRUE(other.eventually([&other] { return !other.icon().empty(); }));
  EXPECT_EQ(findItem(other.layout(), "Open Vorda…"), nullptr);
  EXPECT_NE(findItem(other.layout(), "Refresh now"), nullptr);
}

TEST_F(TrayHosts, ThatCannotScrollLeaveRowsAndTheWholeMenuToTheProgram) {
  host->takeName("org.gnome.Shell");
  host->appear();
  program = desktop.startProgram();
  ASSERT_TRUE(host->eventually([this] { return !host->icon().empty(); }));
  const HostItem menu = host->layout();
  const auto row = std::find_if(menu.children.begin(), menu.children.end(),
                                [](const HostItem& item) { return item.iconBytes > 0; });
  if (row != menu.children.end()) {
    host->click(*row);
    EXPECT_TRUE(windowAppears(kMenu));
    EXPECT_FALSE(desktop.showsWindow(kWindow));
    desktop.press({"Escape"});
    EXPECT_TRUE(windowGoes(kMenu));
  }

  choose("Open Vorda…");
  EXPECT_TRUE(windowAppears(kWindow));
  EXPECT_TRUE(windowAppears(kMenu));
  desktop.press({"Escape"});
  EXPECT_TRUE(windowGoes(kMenu));
  EXPECT_TRUE(windowGoes(kWindow));
}

}  // namespace
