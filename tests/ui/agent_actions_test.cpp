#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include "ui/alerts.h"
#include "ui/controller_test.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr int kCancel = kAlertFirstButtonReturn + 1;

/// One loaded agent, hermes, in a menu that is closed.
class AgentActions : public ControllerTest {
 protected:
  AgentActions() { addAgent("hermes", "/units/hermes.service"); }

  void unload() { controller().perform(entry(row("hermes"), Action::unloadAgent)); }
  void load() { controller().perform(entry(row("hermes"), Action::loadAgent)); }
  void unloadByLabel(const std::string& label) {
    controller().perform({.action = Action::unloadByLabel, .representedObject = label});
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

TEST_F(AgentActions, UnloadAsksThenStopsAndSamples) {
  start();
  const VordaLaunchAgent agent = controller().agents().front();
  frontEnd_.whileAlertIsOpen = [](const Alert&) { EXPECT_THAT(machine().serviceCalls, IsEmpty()); };
  unload();
  EXPECT_THAT(frontEnd_.alerts, ElementsAre(Alerts::unload(agent)));
  EXPECT_THAT(machine().serviceCalls, ElementsAre("stop hermes 1"));
  expectClosedAndSampled(3);
}

TEST_F(AgentActions, UnloadOfAnAgentThatIsNotLoadedIsSilent) {
  machine().stopReplies = {{3, "No such process"}};
  start();
  unload();
  EXPECT_EQ(frontEnd_.alerts.size(), 1U);
  expectClosedAndSampled(3);
}

TEST_F(AgentActions, UnloadThatFailsIsToldAndSamplesAllTheSame) {
  failToStop();
  start();
  unload();
  ASSERT_EQ(frontEnd_.alerts.size(), 2U);
  EXPECT_EQ(frontEnd_.alerts[1], Alerts::notice("Failed", "Failed to unload hermes"));
  expectClosedAndSampled(3);
}

TEST_F(AgentActions, UnloadReplacesTheSamplesThatFollowAnEarlierAction) {
  start();
  unload();
  unload();
  EXPECT_EQ(frontEnd_.pendingWork(), 4U);  // the timer and three
}

TEST_F(AgentActions, UnloadThatIsCancelledDoesNothing) {
  start();
  for (const int answer : {kCancel, kAlertDismissed}) {
    frontEnd_.answers = {answer};
    unload();
  }
  EXPECT_EQ(frontEnd_.alerts.size(), 2U);
  EXPECT_THAT(machine().serviceCalls, IsEmpty());
  EXPECT_EQ(machine().jobFileListings, 1);
  EXPECT_EQ(machine().pidListings, 1);
  EXPECT_EQ(frontEnd_.trackingsCancelled, 0);
}

TEST_F(AgentActions, UnloadSurvivesAListThatChangesWhileItAsks) {
  frontEnd_.whileAlertIsOpen = [this](const Alert&) {
    machine().jobFiles.clear();
    frontEnd_.advance(5);
  };
  start();
  unload();
  EXPECT_THAT(machine().serviceCalls, ElementsAre("stop hermes 1"));

  addAgent("hermes");
  controller().menuNeedsUpdate(menu());
  unloadByLabel("hermes");
  EXPECT_THAT(machine().serviceCalls, ElementsAre("stop hermes 1", "stop hermes 1"));
}

TEST_F(AgentActions, AProcessUnloadsItsAgentByLabel) {
  machine().processes = {{.pid = 7, .arguments = {"/usr/bin/blender"}, .footprintMB = 700}};
  machine().loadedJobs["hermes"] = 7;
  start();
  const VordaLaunchAgent agent = controller().agents().front();
  choose(7, Action::unloadByLabel);
  EXPECT_THAT(frontEnd_.alerts, ElementsAre(Alerts::unload(agent)));
  EXPECT_THAT(machine().serviceCalls, ElementsAre("stop hermes 1"));
  expectClosedAndSampled(3);
}

TEST_F(AgentActions, UnloadByLabelTakesTheFirstOfTwo) {
  machine().jobFiles.push_back({"hermes", "/etc/hermes.service", {}, false});
  start();
  unloadByLabel("hermes");
  EXPECT_THAT(
      frontEnd_.alerts,
      ElementsAre(Alerts::unload({.label = "hermes", .plistPath = "/units/hermes.service"})));
}

TEST_F(AgentActions, AProcessUnloadsAnAgentThatHasNoRow) {
  addAgent("editor", "/units/editor.service");  // no AI tooling and not kept alive
  machine().processes = {{.pid = 7, .arguments = {"/usr/bin/blender"}, .footprintMB = 700}};
  machine().loadedJobs["editor"] = 7;
  start();
  choose(7, Action::unloadByLabel);
  EXPECT_THAT(
      frontEnd_.alerts,
      ElementsAre(Alerts::unload({.label = "editor", .plistPath = "/units/editor.service"})));
  EXPECT_THAT(machine().serviceCalls, ElementsAre("stop editor 1"));
  expectClosedAndSampled(3);
}

TEST_F(AgentActions, UnloadByALabelThatIsNotThereDoesNothing) {
  start();
  for (const auto* label : {"gone", "Hermes", "hermes ", ""}) unloadByLabel(label);
  EXPECT_THAT(frontEnd_.alerts, IsEmpty());
  EXPECT_THAT(machine().serviceCalls, IsEmpty());
  EXPECT_EQ(machine().pidListings, 1);
}

class AgentLoad : public AgentActions {
 protected:
  AgentLoad() {
    machine().loadedJobs.clear();
    machine().jobFiles.front().keepAlive = true;  // or the menu does not offer it
  }
};

TEST_F(AgentLoad, StartsWithoutAskingAndSamplesOnce) {
  start();
  load();
  EXPECT_THAT(frontEnd_.alerts, IsEmpty());
  EXPECT_THAT(machine().serviceCalls, ElementsAre("start hermes 1"));
  expectClosedAndSampled(0);
}

TEST_F(AgentLoad, ThatFailsIsToldAndSamplesAllTheSame) {
  machine().startReplies = {{1, "already loaded"}};
  start();
  load();
  EXPECT_THAT(frontEnd_.alerts, ElementsAre(Alerts::notice("Failed", "Failed to load hermes")));
  expectClosedAndSampled(0);
}

class UtilityCommands : public ControllerTest {};

TEST_F(UtilityCommands, OpenTheSystemMonitor) {
  start();
  controller().perform(row("Open System Monitor"));
  EXPECT_EQ(machine().systemMonitorOpened, 1);
  EXPECT_EQ(machine().pidListings, 1);
}

TEST_F(UtilityCommands, ShowTheAboutAlert) {
  start();
  controller().perform(row("About Vorda"));
  EXPECT_THAT(frontEnd_.alerts, ElementsAre(Alert{.messageText = "About"}));
}

TEST_F(UtilityCommands, QuitTheProgram) {
  start();
  controller().perform(row("Quit Vorda"));
  EXPECT_EQ(frontEnd_.terminations, 1);
}

}  // namespace
