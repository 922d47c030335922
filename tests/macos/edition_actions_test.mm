// What the items of the edition do when they are chosen.
#include <sys/proc.h>

#include <cerrno>

#include "macos/edition.h"
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

TEST_F(Edition, QuitReachesTheProcessAndItsRowGoes) {
  whileRunning([] {
    chooseInSubmenu(kOllamaRow, "Quit");
    EXPECT_THAT(kernel().signals, ElementsAre(Sent{101, 15}));
    EXPECT_THAT(appkit::titles(menu()), Not(Contains(kOllamaRow)));
    EXPECT_EQ(appkit::record().trackingsCancelled, 1);
    EXPECT_THAT(appkit::record().alerts, IsEmpty());
  });
}

TEST_F(Edition, ProcessThatStaysSaysWhenItWasAskedToQuit) {
  kernel().processes[0].ignoresTerm = true;
  kernel().processes[0].state = SSTOP;
  whileRunning([] {
    chooseInSubmenu(kOllamaRow, "Quit");
    appkit::advanceMainQueue(4);
    EXPECT_THAT(appkit::titles(submenuOf(kOllamaRow)),
                ElementsAre("2.00 GB · pid 101", "Ollama", "-", StartsWith("Asked to quit "),
                            "It is stopped: it takes the request when it goes on", "Quit",
                            "Force Quit ( 2.0 GB)", "Full details…"));
    EXPECT_FALSE([[submenuOf(kOllamaRow) itemAtIndex:3] isEnabled]);
    EXPECT_THAT(appkit::record().alerts, IsEmpty());
  });
}

TEST_F(Edition, RefusedQuitSaysWhy) {
  kernel().processes[0].killError = EPERM;
  whileRunning([] {
    chooseInSubmenu(kOllamaRow, "Quit");
    ASSERT_EQ(appkit::record().alerts.size(), 1);
    EXPECT_EQ(appkit::record().alerts[0].messageText, "Failed");
    EXPECT_THAT(appkit::record().alerts[0].informativeText,
                StartsWith("macOS refused the signal (Operation not permitted).\n\nPID 101 "));
    EXPECT_THAT(appkit::titles(menu()), Contains(kOllamaRow));
  });
}

TEST_F(Edition, ForceQuitAsksFirst) {
  whileRunning([] {
    appkit::record().answers = {1001};
    chooseInSubmenu(kOllamaRow, "Force Quit");
    ASSERT_EQ(appkit::record().alerts.size(), 1);
    const appkit::ShownAlert& alert = appkit::record().alerts[0];
    EXPECT_EQ(alert.messageText, "Force Quit?");
    EXPECT_EQ(alert.informativeText,
              "Ollama Server\nPID 101\n2.00 GB RAM (Activity Monitor)\n\nThis cannot be undone.");
    EXPECT_EQ(alert.style, static_cast<int>(NSAlertStyleWarning));
    EXPECT_THAT(alert.buttons, ElementsAre("Force Quit", "Cancel"));
    EXPECT_THAT(kernel().signals, IsEmpty());

    appkit::record().answers = {1000};
    chooseInSubmenu(kOllamaRow, "Force Quit");
    EXPECT_THAT(kernel().signals, ElementsAre(Sent{101, 9}));
  });
}

TEST_F(Edition, ChoiceWaitsUntilTheMenuIsGoneFromTheScreen) {
  whileRunning([] {
    pickInSubmenu(kOllamaRow, "Force Quit");
    EXPECT_THAT(appkit::record().alerts, IsEmpty());
    appkit::turnRunLoop();
    EXPECT_EQ(appkit::record().alerts.size(), 1);
    EXPECT_THAT(kernel().signals, ElementsAre(Sent{101, 9}));
  });
}

TEST_F(Edition, QuickSecondOpeningLosesNoChoice) {
  whileRunning([] {
    pickInSubmenu(kOllamaRow, "Quit");
    pickInSubmenu(kSafari, "Quit");
    appkit::open(menu());
    appkit::close(menu());
    EXPECT_THAT(kernel().signals, IsEmpty());
    appkit::turnRunLoop();
    EXPECT_THAT(kernel().signals, ElementsAre(Sent{101, 15}, Sent{102, 15}));
  });
}

TEST_F(Edition, WhatIsChosenDuringAnAlertWaitsForItsAnswer) {
  whileRunning([] {
    appkit::record().answers = {1001};
    appkit::record().duringAlert = [] {
      appkit::advanceMainQueue(1);
      pickInSubmenu(kSafari, "Quit");
      appkit::turnRunLoop();
      EXPECT_THAT(kernel().signals, IsEmpty());
    };
    chooseInSubmenu(kOllamaRow, "Force Quit");
    EXPECT_EQ(appkit::record().alerts.size(), 1);
    EXPECT_THAT(kernel().signals, IsEmpty());
    appkit::turnRunLoop();
    EXPECT_THAT(kernel().signals, ElementsAre(Sent{102, 15}));
  });
}

TEST_F(Edition, WhatWasChosenRightBeforeTheEndIsNotDone) {
  whileRunning([] { pickInSubmenu(kOllamaRow, "Quit"); });
  appkit::turnRunLoop();
  EXPECT_THAT(kernel().signals, IsEmpty());
}

TEST_F(Edition, ForceQuitTakesAPidToo) {
  whileRunning([] {
    NSMenuItem* item = itemTitled(submenuOf(kOllamaRow), "Force Quit");
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
    NSMenuItem* quit = itemTitled(submenuOf(kOllamaRow), "Quit");
    kernel().processes[0].startTime += 1;
    appkit::choose(quit);
    EXPECT_THAT(kernel().signals, IsEmpty());
  });
}

TEST_F(Edition, DetailsAreShown) {
  whileRunning([] {
    chooseInSubmenu(kOllamaRow, "Full details…");
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
      NSMenuItem* item = itemTitled(submenuOf(kOllamaRow), command);
      [item setRepresentedObject:[NSArray array]];
      appkit::choose(item);
    }
    EXPECT_THAT(kernel().signals, IsEmpty());
    EXPECT_THAT(appkit::record().alerts, IsEmpty());
  });
}

TEST_F(Edition, RescansFollowAQuit) {
  whileRunning([] {
    chooseInSubmenu(kOllamaRow, "Quit");
    EXPECT_EQ(appkit::waitingOnMainQueue(), 3 + 1) << "and the menu's own after closing";
    EXPECT_GT(appkit::record().activities, 0) << "napped, it would be late";
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
    EXPECT_EQ(appkit::record().activities, 0);
    EXPECT_EQ(appkit::waitingOnMainQueue(), 0);
  });
}

TEST_F(Edition, UnloadRunsLaunchctlOnceItIsConfirmed) {
  writeLaunchAgent("com.ollama.serve", "<key>KeepAlive</key><true/>");
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

    chooseInSubmenu(kOllamaRow, "Unload com.ollama.serve");
    EXPECT_EQ(appkit::record().alerts.size(), 3);
  });
}

TEST_F(Edition, LoadRunsLaunchctlAtOnce) {
  writeLaunchAgent("com.ollama.serve", "<key>KeepAlive</key><true/>");
  whileRunning([] {
    chooseInSubmenu("com.ollama.serve  ·  off ↺", "Start / load");
    EXPECT_THAT(
        Stage::launchctlCalls(),
        Contains("bootstrap|gui/501|" + Stage::userLaunchAgentsPath() + "/com.ollama.serve.plist"));
    EXPECT_THAT(appkit::record().alerts, IsEmpty());
  });
}

TEST_F(Edition, FailedLoadSaysSo) {
  writeLaunchAgent("com.ollama.serve", "<key>KeepAlive</key><true/>");
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

}  // namespace
