#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cerrno>
#include <string>

#include "control/process_terminator.h"
#include "fakes/row_name.h"
#include "ui/alerts.h"
#include "ui/controller_test.h"

namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;

constexpr int kCancelButton = kAlertFirstButtonReturn + 1;

/// Two processes, 7 and 8, in a menu that is closed.
class ProcessActions : public ControllerTest {
 protected:
  ProcessActions() {
    addProcess(7, "blender", 700);
    addProcess(8, "gimp", 300);
  }

  /// Checks that the process was taken off the list without a new sample.
  void expectRemoved(std::int32_t pid, int listingsBefore) {
    EXPECT_THAT(listedPids(), Not(Contains(pid)));
    for (const MenuItem& item : menu().items) {
      EXPECT_FALSE(item.process && item.process->pid == pid) << item.title;
    }
    EXPECT_EQ(machine().pidListings, listingsBefore);
    EXPECT_EQ(frontEnd_.trackingsCancelled, 1);
  }
  /// How often the machine is sampled within this time.
  int samplesWithin(double seconds) {
    const int before = machine().pidListings;
    frontEnd_.advance(seconds);
    return machine().pidListings - before;
  }
  void reusePid(std::int32_t pid) { machine().find(pid)->identity = 999; }
};

TEST_F(ProcessActions, QuitAsksNobodyAndTakesTheProcessOffTheListAtOnce) {
  start();
  choose(7, Action::quitProcess);
  EXPECT_THAT(machine().signals, ElementsAre(ScriptedSignal{7, false}));
  EXPECT_THAT(frontEnd_.alerts, IsEmpty());
  expectRemoved(7, 1);
  EXPECT_THAT(listedPids(), ElementsAre(8));
}

TEST_F(ProcessActions, QuitIsFollowedByThreeSamples) {
  start();
  choose(7, Action::quitProcess);
  EXPECT_EQ(samplesWithin(0.24), 0);
  EXPECT_EQ(samplesWithin(0.01), 1);  // after 0.25 s
  EXPECT_EQ(samplesWithin(0.74), 0);
  EXPECT_EQ(samplesWithin(0.01), 1);  // after 1 s
  EXPECT_EQ(samplesWithin(1.49), 0);
  EXPECT_EQ(samplesWithin(0.01), 1);  // after 2.5 s
  EXPECT_EQ(samplesWithin(2.4), 0);
}

TEST_F(ProcessActions, AProcessThatStayedComesBackWithTheNextSample) {
  start();
  choose(7, Action::quitProcess);
  addProcess(7, "blender", 700);
  frontEnd_.advance(0.25);
  EXPECT_THAT(listedPids(), ElementsAre(7, 8));
  EXPECT_EQ(row(7).title, "blender  ·   700 MB");
}

TEST_F(ProcessActions, OnlyTheLastQuitIsFollowedBySamples) {
  start();
  choose(7, Action::quitProcess);
  frontEnd_.advance(0.5);
  const int before = machine().pidListings;
  choose(8, Action::quitProcess);
  EXPECT_EQ(frontEnd_.pendingWork(), 4U);  // the timer and the second three
  EXPECT_EQ(samplesWithin(2.5), 3);        // after 0.75, 1.5 and 3 s
  EXPECT_EQ(machine().pidListings, before + 3);
}

TEST_F(ProcessActions, SamplesThatFollowAQuitMoveAnOpenMenusStripOnly) {
  start();
  choose(7, Action::quitProcess);
  openMenu();
  const int built = frontEnd_.menusBuilt;
  frontEnd_.advance(2.5);
  EXPECT_EQ(frontEnd_.menusBuilt, built);
  EXPECT_EQ(frontEnd_.stripChanges, 3);
}

TEST_F(ProcessActions, SamplesThatFollowAQuitEndWithTheController) {
  start();
  choose(7, Action::quitProcess);
  controller_.reset();
  EXPECT_EQ(samplesWithin(5), 0);
}

TEST_F(ProcessActions, QuitOfAProcessThatIsGoneIsASuccess) {
  start();
  const MenuItem item = entry(row(7), Action::quitProcess);
  machine().processes.erase(machine().processes.begin());
  chooseOther(item);
  EXPECT_THAT(frontEnd_.alerts, IsEmpty());
  expectRemoved(7, 1);
  EXPECT_EQ(frontEnd_.pendingWork(), 4U);
}

TEST_F(ProcessActions, QuitThatFailsIsExplainedAndFollowedByOneSample) {
  machine().find(7)->signalError = EPERM;
  start();
  choose(7, Action::quitProcess);
  const std::string reason = ProcessTerminator::terminate(7, false).second;
  EXPECT_THAT(frontEnd_.alerts, ElementsAre(Alerts::notice("Failed", reason)));
  EXPECT_EQ(machine().pidListings, 2);
  EXPECT_EQ(frontEnd_.menusBuilt, 2);
  EXPECT_THAT(listedPids(), ElementsAre(7, 8));
  EXPECT_EQ(frontEnd_.trackingsCancelled, 0);
  EXPECT_EQ(frontEnd_.pendingWork(), 1U);  // the timer alone
}

TEST_F(ProcessActions, QuitThatFailsMovesAnOpenMenusStripOnly) {
  machine().find(7)->signalError = EPERM;
  start();
  openMenu();
  const int built = frontEnd_.menusBuilt;
  choose(7, Action::quitProcess);
  EXPECT_EQ(frontEnd_.menusBuilt, built);
  EXPECT_EQ(frontEnd_.stripChanges, 1);
}

TEST_F(ProcessActions, QuitClosesTheMenuBeforeItIsBuiltAnew) {
  start();
  noteOrder();
  choose(7, Action::quitProcess);
  EXPECT_THAT(order(), ElementsAre("close: sampled 1, built 1", "end: sampled 1, built 2"));
}

TEST_F(ProcessActions, QuitThatFailsIsExplainedBeforeItIsSampled) {
  machine().find(7)->signalError = EPERM;
  start();
  noteOrder();
  choose(7, Action::quitProcess);
  EXPECT_THAT(order(), ElementsAre("Failed: sampled 1, built 1", "end: sampled 2, built 2"));
}

TEST_F(ProcessActions, ForceQuitClosesTheMenuBeforeItIsBuiltAnew) {
  start();
  noteOrder();
  choose(7, Action::forceProcess);
  EXPECT_THAT(order(), ElementsAre("Force Quit?: sampled 1, built 1", "close: sampled 1, built 1",
                                   "end: sampled 1, built 2"));
}

TEST_F(ProcessActions, AProcessThatEndedAfterAFailureGoesAtOnce) {
  machine().find(7)->signalError = EPERM;
  frontEnd_.whileAlertIsOpen = [](const Alert&) {
    machine().processes.erase(machine().processes.begin());
  };
  start();
  choose(7, Action::quitProcess);
  EXPECT_THAT(listedPids(), ElementsAre(8));
}

TEST_F(ProcessActions, ForceQuitAsksFirst) {
  start();
  frontEnd_.whileAlertIsOpen = [](const Alert&) { EXPECT_THAT(machine().signals, IsEmpty()); };
  ASSERT_FALSE(controller().processes().empty());
  const Alert question = Alerts::forceQuit(controller().processes().front());
  choose(7, Action::forceProcess);
  EXPECT_THAT(frontEnd_.alerts, ElementsAre(question));
  EXPECT_THAT(machine().signals, ElementsAre(ScriptedSignal{7, true}));
  expectRemoved(7, 1);
  EXPECT_EQ(samplesWithin(2.5), 3);
}

struct AnswerRow {
  const char* name;
  int answer;
};

class RefusedForceQuit : public ProcessActions, public testing::WithParamInterface<AnswerRow> {};

TEST_P(RefusedForceQuit, DoesNothing) {
  start();
  frontEnd_.answers = {GetParam().answer};
  choose(7, Action::forceProcess);
  EXPECT_EQ(frontEnd_.alerts.size(), 1U);
  EXPECT_THAT(machine().signals, IsEmpty());
  EXPECT_EQ(machine().pidListings, 1);
  EXPECT_EQ(frontEnd_.menusBuilt, 1);
  EXPECT_EQ(frontEnd_.trackingsCancelled, 0);
  EXPECT_EQ(frontEnd_.pendingWork(), 1U);
}

INSTANTIATE_TEST_SUITE_P(Table, RefusedForceQuit,
                         testing::Values(AnswerRow{"Cancelled", kCancelButton},
                                         AnswerRow{"Dismissed", kAlertDismissed},
                                         AnswerRow{"AThirdButton", kCancelButton + 1}),
                         rowName<AnswerRow>);

TEST_F(ProcessActions, ForceQuitThatFailsIsExplained) {
  machine().find(7)->signalError = EPERM;
  start();
  choose(7, Action::forceProcess);
  ASSERT_EQ(frontEnd_.alerts.size(), 2U);
  EXPECT_EQ(frontEnd_.alerts[1],
            Alerts::notice("Cannot force quit", ProcessTerminator::terminate(7, true).second));
  EXPECT_EQ(machine().pidListings, 2);
  EXPECT_THAT(listedPids(), ElementsAre(7, 8));
  EXPECT_EQ(frontEnd_.pendingWork(), 1U);
}

TEST_F(ProcessActions, ForceQuitOfAProtectedProcessIsRefusedWithoutAQuestion) {
  start();
  ASSERT_FALSE(controller().processes().empty());
  VordaProcess process = controller().processes().front();
  process.isProtected = true;
  process.ownerName = "root";
  chooseOther({.action = Action::forceProcess, .representedObject = process});
  EXPECT_THAT(frontEnd_.alerts,
              ElementsAre(Alerts::notice("Protected process", Alerts::protectedMessage(process))));
  EXPECT_THAT(machine().signals, IsEmpty());
  EXPECT_EQ(machine().pidListings, 1);
}

TEST_F(ProcessActions, ForceQuitAcceptsAPid) {
  start();
  chooseOther({.action = Action::forceProcess, .representedObject = std::int32_t{8}});
  EXPECT_THAT(frontEnd_.alerts, ElementsAre(Alerts::forceQuit(8)));
  EXPECT_THAT(machine().signals, ElementsAre(ScriptedSignal{8, true}));
  expectRemoved(8, 1);
}

TEST_F(ProcessActions, QuitOfAReusedPidSendsNothingAndCountsAsDone) {
  start();
  reusePid(7);
  choose(7, Action::quitProcess);
  EXPECT_THAT(machine().signals, IsEmpty());
  EXPECT_THAT(frontEnd_.alerts, IsEmpty());
  expectRemoved(7, 1);
  EXPECT_EQ(frontEnd_.pendingWork(), 4U);
}

TEST_F(ProcessActions, ForceQuitOfAReusedPidDoesNotEvenAsk) {
  start();
  reusePid(7);
  choose(7, Action::forceProcess);
  EXPECT_THAT(machine().signals, IsEmpty());
  EXPECT_THAT(frontEnd_.alerts, IsEmpty());
  expectRemoved(7, 1);
}

TEST_F(ProcessActions, ForceQuitOfAProcessThatIsGoneDoesNotEvenAsk) {
  start();
  machine().processes.erase(machine().processes.begin());
  choose(7, Action::forceProcess);
  EXPECT_THAT(frontEnd_.alerts, IsEmpty());
  expectRemoved(7, 1);
}

TEST_F(ProcessActions, ForceQuitLooksAgainAfterTheQuestion) {
  start();
  frontEnd_.whileAlertIsOpen = [this](const Alert&) { reusePid(7); };
  choose(7, Action::forceProcess);
  EXPECT_EQ(frontEnd_.alerts.size(), 1U);
  EXPECT_THAT(machine().signals, IsEmpty());
  expectRemoved(7, 1);
}

TEST_F(ProcessActions, APidThatIsReusedWhileTheListIsShortenedIsNotTakenForTheListedProcess) {
  start();
  reusePid(8);
  choose(7, Action::quitProcess);  // builds the menu anew from the same sample
  choose(8, Action::quitProcess);
  EXPECT_THAT(machine().signals, ElementsAre(ScriptedSignal{7, false}));
}

TEST_F(ProcessActions, AReusedPidIsTheNewProcessOnceItIsSampled) {
  start();
  reusePid(7);
  frontEnd_.advance(5);
  choose(7, Action::quitProcess);
  EXPECT_THAT(machine().signals, ElementsAre(ScriptedSignal{7, false}));
}

TEST_F(ProcessActions, SurviveAMenuThatIsBuiltAnewWhileTheyAsk) {
  start();
  frontEnd_.whileAlertIsOpen = [this](const Alert&) { frontEnd_.advance(20); };
  choose(7, Action::forceProcess);
  EXPECT_THAT(machine().signals, ElementsAre(ScriptedSignal{7, true}));
  EXPECT_THAT(listedPids(), ElementsAre(8));
}

TEST_F(ProcessActions, RemoveTheProcessAlsoWhenTheMenuIsClosedAtOnce) {
  // The front end reports the close from within the call, and the process takes its time.
  struct ClosingFrontEnd : ScriptedFrontEnd {
    StatusBarController* controller = nullptr;
    void cancelTracking() override {
      addProcess(7, "blender", 700);
      controller->menuDidClose();
    }
  } frontEnd;
  StatusBarController controller(frontEnd, {});
  frontEnd.controller = &controller;
  controller.perform(std::make_shared<const MenuItem>(
      MenuItem{.action = Action::quitProcess, .representedObject = std::int32_t{7}}));
  ASSERT_EQ(controller.processes().size(), 1U);
  EXPECT_EQ(controller.processes()[0].pid, 8);
  EXPECT_FALSE(controller.menuIsOpen());
}

TEST_F(ProcessActions, DetailsTellOfTheProcessAsItWasInTheMenu) {
  start();
  ASSERT_FALSE(controller().processes().empty());
  const VordaProcess process = controller().processes().front();
  machine().find(7)->footprintMB = 9000;
  choose(7, Action::showDetails);
  EXPECT_THAT(frontEnd_.alerts, ElementsAre(Alerts::details(process)));
  EXPECT_EQ(machine().pidListings, 1);
}

TEST_F(ProcessActions, DockerHelpOpensDockerAndSaysWhereToQuitIt) {
  frontEnd_.whileAlertIsOpen = [](const Alert&) { EXPECT_EQ(machine().dockerDesktopOpened, 1); };
  start();
  chooseOther({.action = Action::openDockerHelp});
  EXPECT_EQ(machine().dockerDesktopOpened, 1);
  EXPECT_THAT(frontEnd_.alerts, ElementsAre(Alerts::quitDocker()));
}

struct WrongRow {
  const char* name;
  Action action;
  RepresentedObject object;
};

class WrongObject : public ProcessActions, public testing::WithParamInterface<WrongRow> {};

TEST_P(WrongObject, IsIgnored) {
  start();
  chooseOther({.action = GetParam().action, .representedObject = GetParam().object});
  EXPECT_THAT(frontEnd_.alerts, IsEmpty());
  EXPECT_THAT(machine().signals, IsEmpty());
  EXPECT_THAT(machine().serviceCalls, IsEmpty());
  EXPECT_EQ(machine().pidListings, 1);
}

INSTANTIATE_TEST_SUITE_P(
    Table, WrongObject,
    testing::Values(WrongRow{"QuitOfNothing", Action::quitProcess, {}},
                    WrongRow{"QuitOfARecord", Action::quitProcess, VordaProcess{.pid = 7}},
                    WrongRow{"QuitOfAText", Action::quitProcess, std::string("7")},
                    WrongRow{"ForceQuitOfNothing", Action::forceProcess, {}},
                    WrongRow{"ForceQuitOfAText", Action::forceProcess, std::string("7")},
                    WrongRow{"DetailsOfAPid", Action::showDetails, std::int32_t{7}},
                    WrongRow{"DetailsOfNothing", Action::showDetails, {}},
                    WrongRow{"UnloadOfALabel", Action::unloadLaunchAgent, std::string("hermes")},
                    WrongRow{"LoadOfNothing", Action::loadLaunchAgent, {}},
                    WrongRow{"UnloadByLabelOfAnAgent", Action::unloadByLabel, VordaLaunchAgent{}}),
    rowName<WrongRow>);

}  // namespace
