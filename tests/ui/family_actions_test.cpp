#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cerrno>
#include <string>

#include "ui/alerts.h"
#include "ui/controller_test.h"

namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

constexpr int kCancels = kAlertFirstButtonReturn + 1;

/// torchrun (10), two ranks (11, 12) and an ordinary process (20).
class FamilyActions : public ControllerTest {
 protected:
  FamilyActions() {
    addMember(10, 1, "torchrun", 90);
    addMember(11, 10, "python3", 900);
    addMember(12, 10, "python3", 800);
    addProcess(20, "gimp", 300).identity = 20;
    start();
  }

  static void addMember(std::int32_t pid, std::int32_t parent, const std::string& program,
                        double footprintMB) {
    machine().processes.push_back({.pid = pid,
                                   .arguments = {program, "train.py"},
                                   .footprintMB = footprintMB,
                                   .identity = static_cast<std::uint64_t>(pid),
                                   .parent = parent});
  }
};

TEST_F(FamilyActions, BothAskOnceAndNameWhomTheyEnd) {
  frontEnd_.answers = {kCancels, kAlertDismissed};
  choose(11, Action::quitFamily);
  choose(11, Action::forceFamily);
  ASSERT_EQ(frontEnd_.alerts.size(), 2U);
  EXPECT_EQ(frontEnd_.alerts[0].messageText, "Quit all 3 processes of Training: train.py?");
  EXPECT_THAT(frontEnd_.alerts[0].informativeText,
              HasSubstr("torchrun  ·  pid 10\nTraining: train.py  ·  pid 11\n"));
  EXPECT_THAT(frontEnd_.alerts[0].buttons, ElementsAre("Quit all", "Cancel"));
  EXPECT_EQ(frontEnd_.alerts[1].messageText, "Force Quit all 3 processes of Training: train.py?");
  EXPECT_THAT(frontEnd_.alerts[1].informativeText, HasSubstr("This cannot be undone."));
  frontEnd_.advance(20);
  EXPECT_THAT(machine().signals, IsEmpty());
  EXPECT_EQ(frontEnd_.alerts.size(), 2U);
}

TEST_F(FamilyActions, QuitAsksTheHeadAndLaterTheOthers) {
  choose(11, Action::quitFamily);
  EXPECT_THAT(machine().signals, ElementsAre(ScriptedSignal{10, false}));
  frontEnd_.advance(4.9);
  EXPECT_EQ(machine().signals.size(), 1U);
  frontEnd_.advance(0.1);
  EXPECT_THAT(machine().signals, ElementsAre(ScriptedSignal{10, false}, ScriptedSignal{11, false},
                                             ScriptedSignal{12, false}));
  frontEnd_.advance(20);
  EXPECT_EQ(frontEnd_.alerts.size(), 1U) << "that all have ended, the menu shows";
  EXPECT_THAT(listedPids(), ElementsAre(20));
}

TEST_F(FamilyActions, WhatAHeadHasEndedIsNotAskedAgain) {
  choose(11, Action::quitFamily);
  std::erase_if(machine().processes, [](const auto& one) { return one.pid == 11; });
  ASSERT_NE(machine().find(12), nullptr);
  machine().find(12)->identity = 99;  // another process by now
  frontEnd_.advance(20);
  EXPECT_EQ(machine().signals.size(), 1U);
  EXPECT_EQ(frontEnd_.alerts.size(), 1U);
}

TEST_F(FamilyActions, WhoIsStillThereIsNamedInOneSentence) {
  machine().find(11)->ignoresQuit = true;
  choose(11, Action::quitFamily);
  frontEnd_.advance(8);
  ASSERT_EQ(frontEnd_.alerts.size(), 2U);
  EXPECT_EQ(lastAlert().informativeText,
            "1 of 3 processes of Training: train.py still runs (pid 11).");
  frontEnd_.advance(20);
  EXPECT_EQ(frontEnd_.alerts.size(), 2U);
}

TEST_F(FamilyActions, ForceQuitTakesTheHeadFirst) {
  choose(11, Action::forceFamily);
  EXPECT_THAT(machine().signals, ElementsAre(ScriptedSignal{10, true}, ScriptedSignal{11, true},
                                             ScriptedSignal{12, true}));
  frontEnd_.advance(20);
  EXPECT_EQ(frontEnd_.alerts.size(), 1U);
}

TEST_F(FamilyActions, OnlyThoseThatWereNamedAreEnded) {
  frontEnd_.whileAlertIsOpen = [](const Alert&) {
    addMember(13, 10, "python3", 700);  // came while the question was open
    machine().find(12)->identity = 99;  // the pid is another's by now
    machine().find(12)->parent = 1;
  };
  choose(11, Action::forceFamily);
  EXPECT_THAT(machine().signals, ElementsAre(ScriptedSignal{10, true}, ScriptedSignal{11, true}));
}

TEST_F(FamilyActions, ForceQuitReadsTheTreeAgainBeforeItGoesOn) {
  frontEnd_.whileAlertIsOpen = [](const Alert&) {
    // It has become part of other work meanwhile.
    addMember(30, 1, "launcher", 90);
    machine().find(30)->identity = 30;
    machine().find(12)->parent = 30;
  };
  std::vector<int> scans;
  machine().beforeSignal = [&scans](std::int32_t) { scans.push_back(machine().pidListings); };
  choose(11, Action::forceFamily);
  EXPECT_THAT(machine().signals, ElementsAre(ScriptedSignal{10, true}, ScriptedSignal{11, true}));
  ASSERT_EQ(scans.size(), 2U);
  EXPECT_GT(scans[1], scans[0]);
  frontEnd_.advance(2);
  EXPECT_EQ(lastAlert().informativeText,
            "1 of 3 processes of Training: train.py still runs (pid 12).");
}

TEST_F(FamilyActions, WhatBeganSinceTheQuestionIsToldOf) {
  frontEnd_.whileAlertIsOpen = [](const Alert& alert) {
    if (alert.buttons.size() == 2) addMember(13, 10, "python3", 700);
  };
  choose(11, Action::forceFamily);
  EXPECT_EQ(machine().signals.size(), 3U);
  frontEnd_.advance(2);
  ASSERT_EQ(frontEnd_.alerts.size(), 2U);
  EXPECT_EQ(lastAlert().informativeText,
            "All 3 processes of Training: train.py have ended, but 1 that began since still runs "
            "(pid 13).");
}

TEST_F(FamilyActions, EachThatIsEndedIsNamed) {
  for (std::int32_t pid = 100; pid < 120; ++pid) addMember(pid, 10, "helper", 3);
  controller().menuNeedsUpdate();
  frontEnd_.answers = {kCancels};
  choose(11, Action::forceFamily);
  EXPECT_THAT(lastAlert().informativeText,
              HasSubstr("\nhelper  ·  pid 116\nand 3 more  ·  pid 117, 118, 119\n"));
}

TEST_F(FamilyActions, ARefusalIsExplained) {
  machine().find(12)->signalError = EPERM;
  choose(11, Action::forceFamily);
  frontEnd_.advance(2);
  ASSERT_EQ(frontEnd_.alerts.size(), 2U);
  EXPECT_THAT(lastAlert().informativeText,
              HasSubstr("1 of 3 processes of Training: train.py still runs (pid 12): "));
  EXPECT_THAT(lastAlert().informativeText, HasSubstr("refused the signal"));
}

TEST_F(FamilyActions, OthersProcessesAreLeftAloneAndSaid) {
  machine().find(12)->effectiveUid = 1001;
  controller().menuNeedsUpdate();
  EXPECT_EQ(entry(row(11), Action::quitFamily).title, "Quit all 2…");
  choose(11, Action::forceFamily);
  ASSERT_FALSE(frontEnd_.alerts.empty());
  EXPECT_THAT(frontEnd_.alerts[0].informativeText,
              HasSubstr("1 more belongs to somebody else, and stays."));
  EXPECT_THAT(frontEnd_.alerts[0].informativeText, Not(HasSubstr("pid 12")));
  EXPECT_THAT(machine().signals, ElementsAre(ScriptedSignal{10, true}, ScriptedSignal{11, true}));
}

TEST_F(FamilyActions, TheOutcomeWaitsUntilTheMenuIsClosed) {
  machine().find(11)->ignoresQuit = true;
  choose(11, Action::quitFamily);
  openMenu();
  frontEnd_.advance(20);
  EXPECT_EQ(frontEnd_.alerts.size(), 1U);
  closeMenu();
  frontEnd_.advance(1);
  EXPECT_EQ(frontEnd_.alerts.size(), 2U);
}

TEST_F(FamilyActions, AFamilyThatHasEndedIsNotAskedFor) {
  const MenuItem item = entry(row(11), Action::quitFamily);
  machine().processes.clear();
  controller().menuNeedsUpdate();
  chooseOther(item);
  chooseOther({.action = Action::quitFamily});
  EXPECT_THAT(frontEnd_.alerts, IsEmpty());
  EXPECT_THAT(machine().signals, IsEmpty());
}

TEST_F(FamilyActions, NothingFollowsWhenTheControllerIsGone) {
  choose(11, Action::quitFamily);
  controller_.reset();
  frontEnd_.advance(20);
  EXPECT_EQ(machine().signals.size(), 1U);
}

}  // namespace
