// How the edition starts, what its menu says, and how it ends.
#include "macos/edition.h"

#include "ui/status_bar_controller.h"

namespace {

using appkit::itemTitled;
using darwin::kernel;
using testing::Contains;
using testing::ElementsAre;
using testing::StartsWith;

TEST_F(Edition, IsAnAccessoryWithATitleAndAMenu) {
  whileRunning([] {
    EXPECT_EQ([[NSApplication sharedApplication] activationPolicy],
              NSApplicationActivationPolicyAccessory);
    NSStatusItem* item = appkit::statusItem();
    EXPECT_STREQ([[[item button] title] UTF8String], "Vorda²");
    EXPECT_STREQ([[[item button] toolTip] UTF8String],
                 "Vorda\nLargest: 2.00 GB — Ollama Server\nHalvek");
    EXPECT_GT([[item menu] numberOfItems], 10);
    EXPECT_EQ([[item menu] delegate],
              [[[item menu] itemAtIndex:[[item menu] numberOfItems] - 1] target]);
  });
}

TEST_F(Edition, IsAnAccessoryBeforeItHasAStatusItem) {
  whileRunning([] {
    EXPECT_EQ(appkit::record().policyAtStatusItem, NSApplicationActivationPolicyAccessory);
  });
}

TEST_F(Edition, HasNoControllerBeforeItHasLaunched) {
  AppDelegate* fresh = [[[AppDelegate alloc] init] autorelease];
  EXPECT_EQ([fresh statusController], nullptr);
  EXPECT_EQ(appkit::statusItem(), nil);
  whileRunning([] { EXPECT_NE([delegate() statusController], nullptr); });
}

TEST_F(Edition, MenuSaysWhatTheMachineDoes) {
  whileRunning([] {
    EXPECT_THAT(appkit::titles(menu()),
                ElementsAre("", "System   4.0 / 16 GB used", "Largest  2.0 GB  Ollama Server",
                            "Training / fine-tunes  none", "Model servers  2  ·  2.0 GB", "-",
                            "— Top RAM (colors match graph) —", kOllamaRow, kSafari,
                            StartsWith("★ "), "-", "— Model servers —", kOllamaRow,
                            StartsWith("★ "), "-", "Refresh now", "Open Activity Monitor",
                            "About Vorda", "Developed by Halvek", "-", "Quit Vorda"));
    EXPECT_FALSE([[menu() itemAtIndex:1] isEnabled]);
    EXPECT_NE([[menu() itemAtIndex:0] view], nil);
  });
}

TEST_F(Edition, ProcessItemHasItsSubmenu) {
  whileRunning([] {
    NSMenuItem* row = itemTitled(menu(), kOllamaRow);
    EXPECT_STREQ([[row toolTip] UTF8String],
                 "Ollama Server\n2.00 GB · Ollama · pid 101\nOwner: ada\n"
                 "Color matches the pressure strip above.");
    EXPECT_NE([row image], nil);
    EXPECT_STREQ([[row accessibilityLabel] UTF8String], "AI workload: Ollama Server, 2.0 GB");
    EXPECT_EQ([row action], static_cast<SEL>(NULL));
    EXPECT_THAT(appkit::titles([row submenu]),
                ElementsAre("2.00 GB · pid 101", "Ollama", "-", "Quit", "Force Quit ( 2.0 GB)",
                            "Full details…"));
  });
}

TEST_F(Edition, OthersProcessCannotBeQuit) {
  whileRunning([] {
    NSMenuItem* row = [menu() itemAtIndex:9];
    EXPECT_NE(std::string([[row title] UTF8String]).find(" 🔒"), std::string::npos);
    EXPECT_THAT(appkit::titles([row submenu]),
                Contains("Protected (root) — cannot quit from Vorda"));
    EXPECT_EQ(itemTitled([row submenu], "Quit"), nil);
  });
}

TEST_F(Edition, ReopeningShowsSettings) {
  whileRunning([] {
    NSApplication* application = [NSApplication sharedApplication];
    EXPECT_FALSE([delegate() applicationShouldHandleReopen:application hasVisibleWindows:NO]);
    EXPECT_EQ(appkit::record().activations, 1);
    NSWindow* window = appkit::visibleWindow();
    ASSERT_NE(window, nil);
    [window performClose:nil];
    EXPECT_EQ(appkit::visibleWindow(), nil);
    EXPECT_FALSE([delegate() applicationShouldTerminateAfterLastWindowClosed:application]);
    EXPECT_NE(appkit::statusItem(), nil);
    [delegate() applicationShouldHandleReopen:application hasVisibleWindows:NO];
    EXPECT_EQ(appkit::visibleWindow(), window);
  });
}

TEST_F(Edition, CommandCommaShowsSettingsAndCommandWClosesThem) {
  whileRunning([] {
    NSMenu* program = [[[[NSApplication sharedApplication] mainMenu] itemAtIndex:0] submenu];
    NSMenuItem* settings = itemTitled(program, "Settings…");
    EXPECT_STREQ([[settings keyEquivalent] UTF8String], ",");
    appkit::choose(settings);
    EXPECT_NE(appkit::visibleWindow(), nil);
    NSMenuItem* close = itemTitled(program, "Close");
    EXPECT_STREQ([[close keyEquivalent] UTF8String], "w");
    EXPECT_EQ([close target], nil) << "whichever window is in front";
    EXPECT_STREQ([NSStringFromSelector([close action]) UTF8String], "performClose:");
  });
}

TEST_F(Edition, SettingsComeToTheFrontEvenWhereTheProgramMayNot) {
  appkit::record().refusesActivation = true;
  whileRunning([] {
    [delegate() showSettings:nil];
    EXPECT_TRUE(appkit::record().windowIsInFront);
    EXPECT_EQ([appkit::visibleWindow() collectionBehavior],
              NSWindowCollectionBehaviorMoveToActiveSpace);
  });
}

TEST_F(Edition, CommandQDoesWhatQuitVordaDoes) {
  whileRunning([] {
    NSMenu* program = [[[[NSApplication sharedApplication] mainMenu] itemAtIndex:0] submenu];
    NSMenuItem* quit = itemTitled(program, "Quit Vorda");
    EXPECT_STREQ([[quit keyEquivalent] UTF8String], "q");
    appkit::choose(quit);
    EXPECT_EQ(appkit::record().terminations, 1);
  });
}

TEST_F(Edition, EndsWithoutATrace) {
  const int itemsBefore = appkit::record().menuItems;
  @autoreleasepool {
    whileRunning([] { chooseInSubmenu(kOllamaRow, "Quit"); });
    [[NSApplication sharedApplication] setMainMenu:nil];
  }
  EXPECT_EQ(appkit::statusItem(), nil);
  EXPECT_EQ(appkit::record().menuItems, itemsBefore);
  EXPECT_EQ(appkit::record().views, 0);
  EXPECT_EQ([[NSApplication sharedApplication] delegate], nil);
}

TEST_F(Edition, WhatIsStillScheduledAfterTheEndDoesNothing) {
  whileRunning([] { chooseInSubmenu(kOllamaRow, "Quit"); });
  kernel().memoryWordsAsked = 0;
  appkit::fireTimers();
  appkit::advanceMainQueue(10);
  EXPECT_EQ(kernel().memoryWordsAsked, 0);
}

TEST_F(Edition, MenuThatWaitsToBeRebuiltIsLeftAloneAfterTheEnd) {
  NSMenu* kept = nil;
  whileRunning([&] {
    kept = [menu() retain];
    appkit::open(kept);
    appkit::close(kept);
  });
  NSArray* before = [kept itemArray];
  EXPECT_GT([before count], 0u);
  appkit::advanceMainQueue(1);
  EXPECT_TRUE([before isEqual:[kept itemArray]]);
  [kept release];
}

TEST_F(Edition, RunsWithoutLaunchctlAndWithoutAnyProcess) {
  Stage::removeLaunchctl();
  kernel().refusesListing = true;
  kernel().memoryFailure = KERN_FAILURE;
  whileRunning([] {
    EXPECT_THAT(appkit::titles(menu()), Contains("  (nothing above threshold)"));
    EXPECT_THAT(appkit::titles(menu()), Contains("System   0.0 / 16 GB used"));
  });
}

TEST_F(Edition, RunsWithoutAButton) {
  appkit::record().buttonless = true;
  whileRunning([] {
    EXPECT_EQ([appkit::statusItem() button], nil);
    EXPECT_THAT(appkit::titles(menu()), Contains("Quit Vorda"));
  });
}

}  // namespace
