// When the menu of the edition changes, and when it may not.
#include "macos/edition.h"
#include "ui/status_bar_controller.h"

namespace {

using appkit::itemTitled;
using darwin::kernel;
using testing::Contains;

TEST_F(Edition, TickMovesTheStripAloneWhileTheMenuIsOpen) {
  whileRunning([] {
    appkit::open(menu());
    NSArray* before = [menu() itemArray];
    kernel().processes[1].footprint = 900 << 20;
    appkit::fireTimers();
    EXPECT_TRUE([before isEqual:[menu() itemArray]]);
    EXPECT_THAT(appkit::titles(menu()), Contains(kSafari));
    EXPECT_TRUE([[[menu() itemAtIndex:0] view] needsDisplay]);
    appkit::close(menu());
    appkit::advanceMainQueue(1);
    EXPECT_THAT(appkit::titles(menu()), Contains("Safari  ·   900 MB"));
  });
}

TEST_F(Edition, TickRebuildsTheClosedMenu) {
  whileRunning([] {
    kernel().processes[1].footprint = 900 << 20;
    appkit::fireTimers();
    EXPECT_THAT(appkit::titles(menu()), Contains("Safari  ·   900 MB"));
  });
}

TEST_F(Edition, TickThatFindsNothingNewLeavesTheClosedMenuAlone) {
  whileRunning([] {
    appkit::fireTimers();
    NSArray* before = [menu() itemArray];
    appkit::fireTimers();
    EXPECT_TRUE([before isEqual:[menu() itemArray]]);
  });
}

TEST_F(Edition, OpeningRebuildsTheMenuBeforeItIsSeen) {
  whileRunning([] {
    kernel().processes[1].footprint = 900 << 20;
    [[menu() delegate] menuNeedsUpdate:menu()];
    EXPECT_THAT(appkit::titles(menu()), Contains("Safari  ·   900 MB"));
  });
}

TEST_F(Edition, RefreshNowRebuildsTheOpenMenu) {
  whileRunning([] {
    appkit::open(menu());
    kernel().processes[1].footprint = 900 << 20;
    appkit::choose(itemTitled(menu(), "Refresh now"));
    EXPECT_THAT(appkit::titles(menu()), Contains("Safari  ·   900 MB"));
  });
}

// AppKit wants no change in that callback, and sends the chosen item's action after it.
TEST_F(Edition, ClosingLeavesTheItemsAloneUntilTheChoiceIsSent) {
  whileRunning([] {
    appkit::open(menu());
    NSArray* before = [menu() itemArray];
    kernel().processes[1].footprint = 900 << 20;
    appkit::close(menu());
    EXPECT_TRUE([before isEqual:[menu() itemArray]]);
    EXPECT_FALSE([delegate() statusController]->menuIsOpen());
    appkit::advanceMainQueue(0.3);
    EXPECT_TRUE([before isEqual:[menu() itemArray]]) << "it still fades";
    appkit::advanceMainQueue(0.7);
    EXPECT_THAT(appkit::titles(menu()), Contains("Safari  ·   900 MB"));
  });
}

TEST_F(Edition, ReopenedAtOnceTheMenuIsNotRebuiltUnderThePointer) {
  whileRunning([] {
    appkit::open(menu());
    appkit::close(menu());
    appkit::open(menu());
    NSArray* before = [menu() itemArray];
    appkit::advanceMainQueue(1);
    EXPECT_TRUE([before isEqual:[menu() itemArray]]);
  });
}

TEST_F(Edition, TimersRunDuringAnAlertAndTheMenuFollows) {
  whileRunning([] {
    appkit::record().duringAlert = [] {
      kernel().processes[1].footprint = 900 << 20;
      appkit::fireTimers();
      EXPECT_THAT(appkit::titles(menu()), Contains("Safari  ·   900 MB"));
      appkit::open(menu());
      NSArray* before = [menu() itemArray];
      kernel().processes[1].footprint = 800 << 20;
      appkit::fireTimers();
      EXPECT_TRUE([before isEqual:[menu() itemArray]]);
      appkit::close(menu());
    };
    chooseCommand("About Vorda");
    EXPECT_EQ(appkit::record().alerts.size(), 1);
    EXPECT_THAT(appkit::titles(menu()), Contains("Safari  ·   800 MB"));
  });
}

// The process ends by our signal while its menu has been opened again.
TEST_F(Edition, CancelledTrackingClosesAMenuThatWasOpenedAgain) {
  whileRunning([] {
    appkit::record().answers = {1000};
    appkit::record().duringAlert = [] { appkit::open(menu()); };
    chooseInSubmenu(kOllamaRow, "Force Quit");
    EXPECT_EQ(appkit::record().menusOpen, 0);
    EXPECT_FALSE([delegate() statusController]->menuIsOpen());
    appkit::advanceMainQueue(1);
    EXPECT_THAT(appkit::titles(menu()), testing::Not(Contains(kOllamaRow)));
  });
}

TEST_F(Edition, OtherMenusAreIgnored) {
  whileRunning([] {
    NSArray* before = [menu() itemArray];
    NSMenu* other = submenuOf(kOllamaRow);
    id<NSMenuDelegate> listener = [menu() delegate];
    [listener menuNeedsUpdate:other];
    [listener menuWillOpen:other];
    EXPECT_FALSE([delegate() statusController]->menuIsOpen());
    [listener menuDidClose:other];
    appkit::advanceMainQueue(1);
    EXPECT_TRUE([before isEqual:[menu() itemArray]]);
  });
}

}  // namespace
