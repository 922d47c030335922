#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <string>

#include "ui/alerts.h"
#include "ui/controller_test.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr int kCancel = kAlertFirstButtonReturn + 1;

/// One loaded launch agent, hermes, in a menu that is closed.
class LaunchAgentActions : public ControllerTest {
 protected:
  LaunchAgentActions() { addLaunchAgent("hermes", "/units/hermes.service"); }

  void unload() { choose(entry(row("hermes"), Action::unloadLaunchAgent)); }
  void load() { choose(entry(row("hermes"), Action::loadLaunchAgent)); }
  void unloadByLabel(const std::string& label) {
    chooseOther({.action = Action::unloadByLabel, .representedObject = label});
  }
  static void failToStop() { machine().stopReplies = {{1, "busy"}, {1, "busy"}, {1, "busy"}}; }

  /// The menu is closed and the machine sampled once, then this many times more.
  void expectClosedAndSampled(int timesMore) {
    EXPECT_EQ(frontEnd_.trackingsCancelled, 1);
    EXPECT_EQ(machine().pidListings, 2);
    frontEnd_.advance(2.5);
    EXPECT_EQ(machine().pidListings, 2 + timesMore);
  }
};

TEST_F(LaunchAgentActions, UnloadAsksThenStopsAndSamples) {
  start();
  ASSERT_FALSE(controller().launchAgents().empty());
  const VordaLaunchAgent launchAgent = controller().launchAgents().front();
  frontEnd_.whileAlertIsOpen = [](const Alert&) { EXPECT_THAT(machine().serviceCalls, IsEmpty()); };
  unload();
  EXPECT_THAT(frontEnd_.alerts, ElementsAre(Alerts::unload(launchAgent)));
  EXPECT_THAT(machine().serviceCalls, ElementsAre("stop hermes 1"));
  expectClosedAndSampled(3);
}

TEST_F(LaunchAgentActions, UnloadOfALaunchAgentThatIsNotLoadedIsSilent) {
  machine().stopReplies = {{3, "No such process"}};
  start();
  unload();
  EXPECT_EQ(frontEnd_.alerts.size(), 1U);
  expectClosedAndSampled(3);
}

TEST_F(LaunchAgentActions, UnloadThatFailsIsToldAndSamplesAllTheSame) {
  failToStop();
  start();
  unload();
  ASSERT_EQ(frontEnd_.alerts.size(), 2U);
  EXPECT_EQ(frontEnd_.alerts[1], Alerts::notice("Failed", "Failed to unload hermes"));
  expectClosedAndSampled(3);
}

TEST_F(LaunchAgentActions, UnloadClosesTheMenuThenSamples) {
  start();
  noteOrder();
  unload();
  EXPECT_THAT(order(), ElementsAre("Unload hermes?: sampled 1, built 1",
                                   "close: sampled 1, built 1", "end: sampled 2, built 2"));
}

TEST_F(LaunchAgentActions, UnloadThatFailsIsToldThenClosesTheMenuThenSamples) {
  failToStop();
  start();
  noteOrder();
  unload();
  EXPECT_THAT(order(),
              ElementsAre("Unload hermes?: sampled 1, built 1", "Failed: sampled 1, built 1",
                          "close: sampled 1, built 1", "end: sampled 2, built 2"));
}

TEST_F(LaunchAgentActions, UnloadReplacesTheSamplesThatFollowAnEarlierAction) {
  start();
  unload();
  unload();
  EXPECT_EQ(frontEnd_.pendingWork(), 4U);  // the timer and three
}

TEST_F(LaunchAgentActions, UnloadThatIsCancelledDoesNothing) {
  start();
  for (const int answer : {kCancel, kAlertDismissed}) {
    frontEnd_.answers = {answer};
    unload();
  }
  EXPECT_EQ(frontEnd_.alerts.size(), 2U);
  EXPECT_THAT(machine().serviceCalls, IsEmpty());
  EXPECT_EQ(machine().launchAgentFileListings, 1);
  EXPECT_EQ(machine().pidListings, 1);
  EXPECT_EQ(frontEnd_.trackingsCancelled, 0);
}

TEST_F(LaunchAgentActions, UnloadSurvivesAListThatChangesWhileItAsks) {
  frontEnd_.whileAlertIsOpen = [this](const Alert&) {
    machine().launchAgentFiles.clear();
    frontEnd_.advance(5);
  };
  start();
  unload();
  EXPECT_THAT(machine().serviceCalls, ElementsAre("stop hermes 1"));

  addLaunchAgent("hermes");
  controller().menuNeedsUpdate();
  unloadByLabel("hermes");
  EXPECT_THAT(machine().serviceCalls, ElementsAre("stop hermes 1", "stop hermes 1"));
}

TEST_F(LaunchAgentActions, AProcessUnloadsItsLaunchAgentByLabel) {
  machine().processes = {{.pid = 7, .arguments = {"/usr/bin/blender"}, .footprintMB = 700}};
  machine().loadedLaunchAgents["hermes"] = 7;
  start();
  ASSERT_FALSE(controller().launchAgents().empty());
  const VordaLaunchAgent launchAgent = controller().launchAgents().front();
  choose(7, Action::unloadByLabel);
  EXPECT_THAT(frontEnd_.alerts, ElementsAre(Alerts::unload(launchAgent)));
  EXPECT_THAT(machine().serviceCalls, ElementsAre("stop hermes 1"));
  expectClosedAndSampled(3);
}

TEST_F(LaunchAgentActions, UnloadByLabelTakesTheFirstOfTwo) {
  machine().launchAgentFiles.push_back({"hermes", "/etc/hermes.service", {}, false});
  start();
  unloadByLabel("hermes");
  EXPECT_THAT(
      frontEnd_.alerts,
      ElementsAre(Alerts::unload({.label = "hermes", .plistPath = "/units/hermes.service"})));
}

TEST_F(LaunchAgentActions, AProcessUnloadsALaunchAgentThatHasNoRow) {
  addLaunchAgent("editor", "/units/editor.service");  // no AI tooling and not kept alive
  machine().processes = {{.pid = 7, .arguments = {"/usr/bin/blender"}, .footprintMB = 700}};
  machine().loadedLaunchAgents["editor"] = 7;
  start();
  choose(7, Action::unloadByLabel);
  EXPECT_THAT(
      frontEnd_.alerts,
      ElementsAre(Alerts::unload({.label = "editor", .plistPath = "/units/editor.service"})));
  EXPECT_THAT(machine().serviceCalls, ElementsAre("stop editor 1"));
  expectClosedAndSampled(3);
}

TEST_F(LaunchAgentActions, UnloadByALabelThatIsNotThereDoesNothing) {
  start();
  for (const auto* label : {"gone", "Hermes", "hermes ", ""}) unloadByLabel(label);
  EXPECT_THAT(frontEnd_.alerts, IsEmpty());
  EXPECT_THAT(machine().serviceCalls, IsEmpty());
  EXPECT_EQ(machine().pidListings, 1);
}

class LaunchAgentLoad : public LaunchAgentActions {
 protected:
  LaunchAgentLoad() {
    machine().loadedLaunchAgents.clear();
    machine().launchAgentFiles.front().keepAlive = true;  // or the menu does not offer it
  }
};

TEST_F(LaunchAgentLoad, StartsWithoutAskingAndSamplesOnce) {
  start();
  load();
  EXPECT_THAT(frontEnd_.alerts, IsEmpty());
  EXPECT_THAT(machine().serviceCalls, ElementsAre("start hermes 1"));
  expectClosedAndSampled(0);
}

TEST_F(LaunchAgentLoad, ThatFailsIsToldAndSamplesAllTheSame) {
  machine().startReplies = {{1, "already loaded"}};
  start();
  load();
  EXPECT_THAT(frontEnd_.alerts, ElementsAre(Alerts::notice("Failed", "Failed to load hermes")));
  expectClosedAndSampled(0);
}

TEST_F(LaunchAgentLoad, ThatFailsMovesTheStripOnlyOfAMenuThatStaysOpen) {
  machine().startReplies = {{1, "already loaded"}};
  start();
  openMenu();
  const int built = frontEnd_.menusBuilt;
  load();
  EXPECT_EQ(frontEnd_.menusBuilt, built);
  EXPECT_EQ(frontEnd_.stripChanges, 1);
}

/// Two launch agents, hermes and ollama, and a manager that takes its time.
class SlowLaunchAgentActions : public LaunchAgentActions {
 protected:
  SlowLaunchAgentActions() {
    addLaunchAgent("ollama");
    machine().attemptsGoOn = true;
  }
  void SetUp() override { start(); }

  std::string title(const std::string& label) const { return row(label).title; }
  void loadOllama() {
    machine().loadedLaunchAgents.erase("ollama");
    machine().launchAgentFiles.back().keepAlive = true;
    controller().menuNeedsUpdate();
    choose(entry(row("ollama"), Action::loadLaunchAgent));
  }
  /// The manager has done what it was asked.
  void finish() {
    machine().attemptsGoOn = false;
    machine().loadedLaunchAgents.erase("hermes");
    frontEnd_.advance(kLook);
  }
  std::size_t failures() const {
    return static_cast<std::size_t>(
        std::count_if(frontEnd_.alerts.begin(), frontEnd_.alerts.end(),
                      [](const Alert& alert) { return alert.messageText == "Failed"; }));
  }

  static constexpr double kLook = 0.1;
};

TEST_F(SlowLaunchAgentActions, StoppingIsSaidAndNotWaitedFor) {
  unload();
  EXPECT_THAT(machine().serviceCalls, ElementsAre("stop hermes 1"));
  EXPECT_EQ(title("hermes"), "hermes  ·  stopping…");
  EXPECT_EQ(frontEnd_.trackingsCancelled, 1);
  frontEnd_.advance(3600);
  EXPECT_EQ(title("hermes"), "hermes  ·  stopping…") << "no clock ends it";
  EXPECT_EQ(frontEnd_.alerts.size(), 1U);
  EXPECT_THAT(machine().serviceCalls, ElementsAre("stop hermes 1"));
}

TEST_F(SlowLaunchAgentActions, StartingIsSaidAndNotWaitedFor) {
  loadOllama();
  EXPECT_EQ(title("ollama"), "ollama  ·  starting… ↺");
  EXPECT_THAT(machine().serviceCalls, ElementsAre("start ollama 1"));
}

TEST_F(SlowLaunchAgentActions, TheOutcomeClosesTheMenuAndSamples) {
  unload();
  const int sampled = machine().pidListings;
  const int closed = frontEnd_.trackingsCancelled;
  frontEnd_.advance(1);
  EXPECT_EQ(machine().pidListings, sampled) << "looking after it samples nothing";
  finish();
  EXPECT_EQ(frontEnd_.trackingsCancelled, closed + 1);
  EXPECT_EQ(machine().pidListings, sampled + 1);
  EXPECT_EQ(frontEnd_.alerts.size(), 1U) << "a success is silent";
  EXPECT_EQ(frontEnd_.pendingWork(), 1U + 3U) << "the timer and three samples, no more looks";
}

TEST_F(SlowLaunchAgentActions, AStartIsFollowedByNoSamples) {
  loadOllama();
  finish();
  EXPECT_EQ(frontEnd_.pendingWork(), 1U);
}

TEST_F(SlowLaunchAgentActions, TheOutcomeWaitsForTheMenuToClose) {
  failToStop();
  unload();
  openMenu();
  finish();
  frontEnd_.advance(60);
  EXPECT_EQ(failures(), 0U);
  EXPECT_EQ(frontEnd_.trackingsCancelled, 1);
  closeMenu();
  EXPECT_THAT(titles(), testing::Not(testing::Contains(testing::HasSubstr("stopping…"))));
  frontEnd_.advance(kLook);
  EXPECT_EQ(lastAlert(), Alerts::notice("Failed", "Failed to unload hermes"));
}

TEST_F(SlowLaunchAgentActions, TheOutcomeWaitsForAnAlertToClose) {
  failToStop();
  unload();
  bool waited = false;
  frontEnd_.whileAlertIsOpen = [&](const Alert& alert) {
    if (alert.messageText != "About") return;
    finish();
    frontEnd_.advance(60);
    waited = failures() == 0 && frontEnd_.trackingsCancelled == 1;
  };
  choose(row("About Vorda"));
  EXPECT_TRUE(waited);
  frontEnd_.advance(kLook);
  EXPECT_EQ(failures(), 1U);
}

TEST_F(SlowLaunchAgentActions, OutcomesAreToldOneAfterTheOther) {
  failToStop();
  machine().startReplies = {{1, "no"}};
  unload();
  loadOllama();
  std::size_t open = 0;
  std::size_t most = 0;
  frontEnd_.whileAlertIsOpen = [&](const Alert&) {
    most = std::max(most, ++open);
    frontEnd_.advance(60);
    --open;
  };
  finish();
  EXPECT_EQ(failures(), 2U);
  EXPECT_EQ(most, 1U);
}

TEST_F(SlowLaunchAgentActions, WhatIsStoppingCannotBeStoppedAgain) {
  unload();
  EXPECT_FALSE(entry(row("hermes"), Action::unloadLaunchAgent).enabled);
}

TEST_F(SlowLaunchAgentActions, WhatIsStartingCanBeStopped) {
  machine().startReplies = {{1, "canceled"}};
  loadOllama();
  choose(entry(row("ollama"), Action::unloadLaunchAgent));
  EXPECT_THAT(machine().serviceCalls, ElementsAre("start ollama 1", "stop ollama 1"));
  EXPECT_EQ(title("ollama"), "ollama  ·  stopping… ↺");
  finish();
  EXPECT_EQ(failures(), 0U) << "what became of the start is nobody's question any more";
}

TEST_F(SlowLaunchAgentActions, AreForgottenWithTheController) {
  unload();
  controller_.reset();
  finish();
  EXPECT_EQ(failures(), 0U);
}

class UtilityCommands : public ControllerTest {};

TEST_F(UtilityCommands, OpenTheSystemMonitor) {
  start();
  choose(row("Open System Monitor"));
  EXPECT_EQ(machine().systemMonitorOpened, 1);
  EXPECT_EQ(machine().pidListings, 1);
}

TEST_F(UtilityCommands, ShowTheAboutAlert) {
  start();
  choose(row("About Vorda"));
  EXPECT_THAT(frontEnd_.alerts, ElementsAre(Alert{.messageText = "About"}));
}

TEST_F(UtilityCommands, QuitTheProgram) {
  start();
  choose(row("Quit Vorda"));
  EXPECT_EQ(frontEnd_.terminations, 1);
}

}  // namespace
