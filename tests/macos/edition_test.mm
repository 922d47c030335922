// The whole edition: started as on a Mac, used as a user uses it.
#import <AppKit/AppKit.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cerrno>

#include "app/app_delegate_macos.h"
#include "app/vorda_app_macos.h"
#include "macos/appkit/user.h"
#include "macos/mac_test.h"
#include "ui/status_bar_controller.h"

namespace {

using appkit::itemTitled;
using darwin::kernel;
using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;
using Sent = darwin::SentSignal;
using Texts = std::vector<std::string>;

class Edition : public MacTest {
 protected:
  Edition() {
    [[NSApplication sharedApplication] setMainMenu:nil];
    kernel().pages.wire_count = 1 << 18;  // 4 GiB of 16
    kernel().processes = {
        darwin::process(101, {"/opt/homebrew/bin/ollama", "serve"}, 2048),
        darwin::process(102, {"/Applications/Safari.app/Contents/MacOS/Safari"}, 600),
        {.pid = 103, .effectiveUid = 0, .path = "/usr/local/bin/ollama", .footprint = {}},
        darwin::process(104, {"/usr/bin/small"}, 5),
    };
  }

  /// Starts the program, does this, and ends the program.
  static void whileRunning(const std::function<void()>& work) {
    appkit::record().whileRunning = work;
    EXPECT_EQ(VordaApp::main(), 0);
  }

  static AppDelegate* delegate() {
    return static_cast<AppDelegate*>([[NSApplication sharedApplication] delegate]);
  }
  static NSMenu* menu() { return [appkit::statusItem() menu]; }
  static NSMenu* submenuOf(const std::string& row) { return [itemTitled(menu(), row) submenu]; }

  /// What a user does to choose a command: AppKit closes the menu before it sends the action.
  static void chooseInSubmenu(const std::string& row, const std::string& command) {
    appkit::open(menu());
    NSMenuItem* item = [[itemTitled(submenuOf(row), command) retain] autorelease];
    ASSERT_NE(item, nil) << row << " / " << command;
    appkit::close(menu());
    appkit::choose(item);
  }
  static void chooseCommand(const std::string& command) {
    appkit::open(menu());
    NSMenuItem* item = [[itemTitled(menu(), command) retain] autorelease];
    ASSERT_NE(item, nil) << command;
    appkit::close(menu());
    appkit::choose(item);
  }
  static void writeAgent(const std::string& label, const std::string& rest) {
    Stage::write(Stage::userAgentsPath() + "/" + label + ".plist",
                 "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<plist version=\"1.0\"><dict>"
                 "<key>Label</key><string>" +
                     label + "</string>" + rest + "</dict></plist>");
  }
};

const std::string kOllama = "★ Ollama Server  ·   2.0 GB";
const std::string kSafari = "Safari  ·   600 MB";

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
                            "— Top RAM (colors match graph) —", kOllama, kSafari, StartsWith("★ "),
                            "-", "— Model servers —", kOllama, StartsWith("★ "), "-", "Refresh now",
                            "Open Activity Monitor", "About Vorda", "Developed by Halvek", "-",
                            "Quit Vorda"));
    EXPECT_FALSE([[menu() itemAtIndex:1] isEnabled]);
    EXPECT_NE([[menu() itemAtIndex:0] view], nil);
  });
}

TEST_F(Edition, ProcessItemHasItsSubmenu) {
  whileRunning([] {
    NSMenuItem* row = itemTitled(menu(), kOllama);
    EXPECT_STREQ([[row toolTip] UTF8String],
                 "Ollama Server\n2.00 GB · Ollama · pid 101\nOwner: ada\n"
                 "Color matches the pressure strip above.");
    EXPECT_NE([row image], nil);
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

TEST_F(Edition, QuitReachesTheProcessAndItsRowGoes) {
  whileRunning([] {
    chooseInSubmenu(kOllama, "Quit");
    EXPECT_THAT(kernel().signals, ElementsAre(Sent{101, 15}));
    EXPECT_THAT(appkit::titles(menu()), Not(Contains(kOllama)));
    EXPECT_EQ(appkit::record().trackingsCancelled, 1);
    EXPECT_THAT(appkit::record().alerts, IsEmpty());
  });
}

TEST_F(Edition, RefusedQuitSaysWhy) {
  kernel().processes[0].killError = EPERM;
  whileRunning([] {
    chooseInSubmenu(kOllama, "Quit");
    ASSERT_EQ(appkit::record().alerts.size(), 1);
    EXPECT_EQ(appkit::record().alerts[0].messageText, "Failed");
    EXPECT_THAT(appkit::record().alerts[0].informativeText,
                StartsWith("macOS refused the signal (Operation not permitted).\n\nPID 101 "));
    EXPECT_THAT(appkit::titles(menu()), Contains(kOllama));
  });
}

TEST_F(Edition, ForceQuitAsksFirst) {
  whileRunning([] {
    appkit::record().answers = {1001};
    chooseInSubmenu(kOllama, "Force Quit");
    ASSERT_EQ(appkit::record().alerts.size(), 1);
    const appkit::ShownAlert& alert = appkit::record().alerts[0];
    EXPECT_EQ(alert.messageText, "Force Quit?");
    EXPECT_EQ(alert.informativeText,
              "Ollama Server\nPID 101\n2.00 GB RAM (Activity Monitor)\n\nThis cannot be undone.");
    EXPECT_EQ(alert.style, static_cast<int>(NSAlertStyleWarning));
    EXPECT_THAT(alert.buttons, ElementsAre("Force Quit", "Cancel"));
    EXPECT_THAT(kernel().signals, IsEmpty());

    appkit::record().answers = {1000};
    chooseInSubmenu(kOllama, "Force Quit");
    EXPECT_THAT(kernel().signals, ElementsAre(Sent{101, 9}));
  });
}

TEST_F(Edition, ForceQuitTakesAPidToo) {
  whileRunning([] {
    NSMenuItem* item = itemTitled(submenuOf(kOllama), "Force Quit");
    [item setRepresentedObject:[NSNumber numberWithInt:101]];
    appkit::choose(item);
    ASSERT_EQ(appkit::record().alerts.size(), 1);
    EXPECT_EQ(appkit::record().alerts[0].informativeText,
              "process\nPID 101\n\nThis cannot be undone.");
    EXPECT_THAT(kernel().signals, ElementsAre(Sent{101, 9}));
  });
}

TEST_F(Edition, NextOwnerOfAPidIsSparedHoweverLongTheMenuWasOpen) {
  whileRunning([] {
    appkit::open(menu());
    NSMenuItem* quit = itemTitled(submenuOf(kOllama), "Quit");
    kernel().processes[0].startTime += 1;
    appkit::choose(quit);
    EXPECT_THAT(kernel().signals, IsEmpty());
  });
}

TEST_F(Edition, DetailsAreShown) {
  whileRunning([] {
    chooseInSubmenu(kOllama, "Full details…");
    ASSERT_EQ(appkit::record().alerts.size(), 1);
    EXPECT_EQ(appkit::record().alerts[0].messageText, "Ollama Server");
    EXPECT_EQ(appkit::record().alerts[0].informativeText,
              "Memory: 2.00 GB  (Activity Monitor scale)\nKind: Ollama\nPID: 101\nOwner: ada"
              "\n\nCommand:\n/opt/homebrew/bin/ollama serve");
  });
}

TEST_F(Edition, WrongRepresentedObjectDoesNothing) {
  whileRunning([] {
    for (const char* command : {"Quit", "Force Quit", "Full details…"}) {
      NSMenuItem* item = itemTitled(submenuOf(kOllama), command);
      [item setRepresentedObject:[NSArray array]];
      appkit::choose(item);
    }
    EXPECT_THAT(kernel().signals, IsEmpty());
    EXPECT_THAT(appkit::record().alerts, IsEmpty());
  });
}

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
    appkit::advanceMainQueue(1);
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

TEST_F(Edition, OtherMenusAreIgnored) {
  whileRunning([] {
    NSArray* before = [menu() itemArray];
    NSMenu* other = submenuOf(kOllama);
    id<NSMenuDelegate> listener = [menu() delegate];
    [listener menuNeedsUpdate:other];
    [listener menuWillOpen:other];
    EXPECT_FALSE([delegate() statusController]->menuIsOpen());
    [listener menuDidClose:other];
    appkit::advanceMainQueue(1);
    EXPECT_TRUE([before isEqual:[menu() itemArray]]);
  });
}

TEST_F(Edition, RescansFollowAQuit) {
  whileRunning([] {
    chooseInSubmenu(kOllama, "Quit");
    for (const double delay : {0.25, 1.0, 2.5}) {
      kernel().processes.push_back(
          darwin::process(static_cast<int>(delay * 100) + 1000, {"/bin/new"}, 700));
    }
    EXPECT_EQ(appkit::waitingOnMainQueue(), 3 + 1) << "and the menu's own after closing";
    const auto listed = [] { return [delegate() statusController]->processes().size(); };
    kernel().processes.push_back(darwin::process(900, {"/bin/a"}, 700));
    const std::size_t before = listed();
    appkit::advanceMainQueue(0.26);
    EXPECT_GT(listed(), before);
    kernel().processes.clear();
    appkit::advanceMainQueue(0.75);
    EXPECT_EQ(listed(), 0);
    kernel().processes = {darwin::process(900, {"/bin/a"}, 700)};
    appkit::advanceMainQueue(1.5);
    EXPECT_EQ(listed(), 1);
    EXPECT_EQ(appkit::waitingOnMainQueue(), 0);
  });
}

TEST_F(Edition, UnloadRunsLaunchctlOnceItIsConfirmed) {
  writeAgent("com.ollama.serve", "<key>KeepAlive</key><true/>");
  Stage::setLaunchctl(
      "[ \"$1\" = list ] && printf 'PID\\tStatus\\tLabel\\n101\\t0\\tcom.ollama.serve\\n' || :");
  whileRunning([] {
    const std::string row = "com.ollama.serve  ·  on · pid 101 ↺";
    appkit::record().answers = {1001};
    chooseInSubmenu(row, "Stop / unload");
    ASSERT_EQ(appkit::record().alerts.size(), 1);
    EXPECT_EQ(appkit::record().alerts[0].messageText, "Unload com.ollama.serve?");
    EXPECT_THAT(appkit::record().alerts[0].buttons, ElementsAre("Unload", "Cancel"));
    EXPECT_THAT(Stage::launchctlCalls(), Not(Contains(StartsWith("bootout"))));

    chooseInSubmenu(row, "Stop / unload");
    EXPECT_THAT(Stage::launchctlCalls(), Contains("bootout|gui/501/com.ollama.serve"));
    EXPECT_EQ(appkit::record().alerts.size(), 2);

    chooseInSubmenu(kOllama, "Unload com.ollama.serve");
    EXPECT_EQ(appkit::record().alerts.size(), 3);
  });
}

TEST_F(Edition, LoadRunsLaunchctlAtOnce) {
  writeAgent("com.ollama.serve", "<key>KeepAlive</key><true/>");
  whileRunning([] {
    chooseInSubmenu("com.ollama.serve  ·  off ↺", "Start / load");
    EXPECT_THAT(Stage::launchctlCalls(), Contains("bootstrap|gui/501|" + Stage::userAgentsPath() +
                                                  "/com.ollama.serve.plist"));
    EXPECT_THAT(appkit::record().alerts, IsEmpty());
  });
}

TEST_F(Edition, FailedLoadSaysSo) {
  writeAgent("com.ollama.serve", "<key>KeepAlive</key><true/>");
  Stage::setLaunchctl("[ \"$1\" = list ] && exit 0; echo busy >&2; exit 5");
  whileRunning([] {
    chooseInSubmenu("com.ollama.serve  ·  off ↺", "Start / load");
    ASSERT_EQ(appkit::record().alerts.size(), 1);
    EXPECT_EQ(appkit::record().alerts[0].messageText, "Failed");
    EXPECT_EQ(appkit::record().alerts[0].informativeText, "Failed to load com.ollama.serve");
  });
}

TEST_F(Edition, CommandsDoWhatTheySay) {
  whileRunning([] {
    chooseCommand("Open Activity Monitor");
    EXPECT_EQ(appkit::record().openedUrls.size(), 1);
    chooseCommand("About Vorda");
    ASSERT_EQ(appkit::record().alerts.size(), 1);
    EXPECT_EQ(appkit::record().alerts[0].messageText, "Vorda");
    EXPECT_EQ(appkit::record().activations, 0);
    chooseCommand("Quit Vorda");
    EXPECT_EQ(appkit::record().terminations, 1);
  });
}

// Only root can read the arguments by which another user's process is known.
TEST_F(Edition, DockerHelpOpensDockerAndSaysHow) {
  kernel().ownUid = 0;
  kernel().processes = {
      darwin::process(7, {"/usr/bin/llama-server", "--model", "/models/docker-llama.gguf"})};
  Stage::write(std::string(Stage::dockerPath()) + "/Contents/Info.plist", "");
  whileRunning([] {
    NSMenu* submenu = [[menu() itemAtIndex:7] submenu];
    NSMenuItem* help = itemTitled(submenu, "Quit Docker Desktop from the menu bar whale");
    ASSERT_NE(help, nil) << testing::PrintToString(appkit::titles(menu()));
    EXPECT_EQ([help representedObject], nil);
    appkit::choose(help);
    EXPECT_EQ(appkit::record().openedUrls.size(), 1);
    ASSERT_EQ(appkit::record().alerts.size(), 1);
    EXPECT_EQ(appkit::record().alerts[0].messageText, "Quit Docker Desktop");
    EXPECT_EQ(appkit::record().alerts[0].informativeText,
              "Use the Docker whale icon → Quit Docker Desktop.");
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

TEST_F(Edition, EndsWithoutATrace) {
  const int itemsBefore = appkit::record().menuItems;
  @autoreleasepool {
    whileRunning([] { chooseInSubmenu(kOllama, "Quit"); });
    [[NSApplication sharedApplication] setMainMenu:nil];
  }
  EXPECT_EQ(appkit::statusItem(), nil);
  EXPECT_EQ(appkit::record().menuItems, itemsBefore);
  EXPECT_EQ(appkit::record().views, 0);
  EXPECT_EQ([[NSApplication sharedApplication] delegate], nil);
}

TEST_F(Edition, WhatIsStillScheduledAfterTheEndDoesNothing) {
  whileRunning([] { chooseInSubmenu(kOllama, "Quit"); });
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
