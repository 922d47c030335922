#include "frontends/terminal/terminal_front_end.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "fakes/row_name.h"
#include "fakes/scripted_platform.h"
#include "frontends/terminal/scripted_screen.h"
#include "ui/status_bar_controller.h"

using terminal::Input;
using terminal::TerminalFrontEnd;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

using Kind = Input::Kind;

/// The real menu and its actions on a scripted machine, used at a scripted terminal.
class TerminalMenu : public testing::Test {
 protected:
  TerminalMenu() {
    resetMachine();
    screen.whenTimePasses = [](double seconds) {
      machine().clock += static_cast<std::uint64_t>(seconds * 1e9);
    };
    addProcess(10, "big", 900);
    addProcess(20, "middle", 600);
    addProcess(30, "small", 300);
  }

  static void addProcess(std::int32_t pid, const std::string& name, double mb) {
    machine().processes.push_back(
        {.pid = pid, .arguments = {"/usr/bin/" + name}, .footprintMB = mb});
  }
  static void removeProcess(std::int32_t pid) {
    std::erase_if(machine().processes, [pid](const auto& one) { return one.pid == pid; });
  }

  void run() {
    TerminalFrontEnd frontEnd(screen);
    StatusBarController controller(frontEnd, Alert{.messageText = "Vorda"});
    running = &controller;
    frontEnd.run(controller);
    running = nullptr;
    EXPECT_EQ(screen.walksGivenUp, 0);
  }
  /// For the process that is selected.
  void chooseQuit() {
    screen.press(Kind::enter);
    screen.press(Kind::home);
    screen.press(Kind::enter);
  }
  bool shows(const std::string& text) const { return screen.shows(text); }
  bool selected(const std::string& text) const {
    return screen.reversed().find(text) != std::string::npos;
  }

  ScriptedScreen screen;
  const StatusBarController* running = nullptr;
};

TEST_F(TerminalMenu, IsRebuiltEveryFiveSecondsAndKeepsTheSelection) {
  screen.walkTo("middle");
  screen.then([&] { addProcess(40, "huge", 2000); });
  screen.wait(4.9);
  screen.then([&] { EXPECT_FALSE(shows("huge")); });
  screen.wait(0.2);
  screen.then([&] {
    EXPECT_TRUE(shows("huge"));
    EXPECT_TRUE(selected("middle"));
  });
  run();
}

TEST_F(TerminalMenu, AClickOnAKeyInTheLastLinePressesIt) {
  const auto clickOn = [this](const std::string& word) {
    screen.then([this, word] {
      const int last = screen.size_.height - 1;
      const std::string picture = screen.picture();
      const std::string line = picture.substr(picture.rfind('\n', picture.size() - 2) + 1);
      const auto at = line.find(word);
      ASSERT_NE(at, std::string::npos) << line;
      const std::size_t arrows = 4;  // "↑↓" takes two columns and six bytes
      screen.playNow({.kind = Kind::click, .x = static_cast<int>(at - arrows), .y = last});
    });
    screen.wait(1);
  };
  screen.walkTo("middle");
  screen.wait(1);
  clickOn("Open");
  screen.then([&] { EXPECT_TRUE(shows("Force Quit")); });
  clickOn("Back");
  screen.then([&] { EXPECT_FALSE(shows("Force Quit")); });
  clickOn("Keys");
  screen.then([&] { EXPECT_TRUE(shows("This list")); });
  screen.press(Kind::escape);
  screen.wait(1);
  clickOn("Quit");
  screen.then([&] { FAIL() << "it has ended"; });
  run();
}

TEST_F(TerminalMenu, OpensASystemMonitorOfTheTerminalWhereThereIsOne) {
  screen.monitors = 1;
  screen.walkTo("Open System Monitor");
  screen.press(Kind::enter);
  screen.then([&] {
    EXPECT_EQ(screen.monitors, 0);
    EXPECT_EQ(machine().systemMonitorOpened, 0);
  });
  screen.press(Kind::enter);
  screen.then([&] { EXPECT_EQ(machine().systemMonitorOpened, 1) << "one with a window"; });
  run();
}

/// Twenty processes: "p00", the largest, to "p19".
class LongTerminalMenu : public TerminalMenu {
 protected:
  LongTerminalMenu() {
    machine().processes.clear();
    for (int i = 0; i < 20; ++i) {
      addProcess(100 + i, (i < 10 ? "p0" : "p") + std::to_string(i), 900 - i);
      machine().processes.back().startTime = static_cast<std::uint64_t>(1 + i);
    }
    screen.size_ = {80, 60};
  }
  void type(const std::string& letters) {
    for (const char letter : letters) screen.type(static_cast<char32_t>(letter));
  }
};

TEST_F(LongTerminalMenu, ACutSectionOpensToAllOfIt) {
  screen.then([&] { EXPECT_FALSE(shows("p08")); });
  screen.walkTo("… and 12 more");
  screen.press(Kind::enter);
  screen.then([&] {
    EXPECT_TRUE(selected("p08")) << "the first of those that were left out";
    EXPECT_TRUE(shows("p19"));
    EXPECT_FALSE(shows(" more"));
  });
  screen.wait(6);
  screen.then([&] { EXPECT_TRUE(shows("p19")) << "and stays open"; });
  run();
}

TEST_F(LongTerminalMenu, IsFilteredAsOneTypes) {
  screen.pause = 0.01;  // as fast as letters come
  type("/p1q");
  screen.then([&] { EXPECT_TRUE(shows("(nothing matches)")); });
  screen.type(terminal::kBackspace);
  screen.then([&] {
    EXPECT_TRUE(shows("Filter: p1_"));
    EXPECT_TRUE(selected("p10"));
    EXPECT_TRUE(shows("p19"));
    EXPECT_FALSE(shows("p09"));
  });
  screen.press(Kind::enter);
  screen.then([&] { EXPECT_TRUE(shows("Filter: p1   Esc ends it")); });
  screen.wait(6);
  screen.then([&] { EXPECT_FALSE(shows("p09")) << "the filter outlives a refresh"; });
  screen.press(Kind::escape);
  screen.then([&] {
    EXPECT_TRUE(shows("p07"));
    EXPECT_TRUE(shows("… and 12 more"));
  });
  run();
}

TEST_F(LongTerminalMenu, TakesAPastedFilterWithoutItsLineEnds) {
  screen.type(U'/');
  screen.press(Kind::pasteBegin);
  type("p1");
  screen.press(Kind::enter);
  type("7");
  screen.press(Kind::pasteEnd);
  screen.then([&] {
    EXPECT_TRUE(shows("Filter: p17_"));
    EXPECT_TRUE(selected("p17"));
  });
  run();
}

TEST_F(LongTerminalMenu, FindsAndGoesOn) {
  screen.press(Kind::find);
  type("p0");
  screen.press(Kind::enter);
  screen.then([&] { EXPECT_TRUE(selected("p00")); });
  screen.type(U'n');
  screen.then([&] { EXPECT_TRUE(selected("p01")); });
  screen.type(U'N');
  screen.type(U'N');
  screen.then([&] { EXPECT_TRUE(selected("p07")) << "round the end"; });
  run();
}

TEST_F(LongTerminalMenu, IsSortedInTurn) {
  screen.type(U's');
  screen.then([&] { EXPECT_TRUE(shows("Sorted by name.")); });
  screen.type(U's');
  screen.then([&] {
    EXPECT_TRUE(shows("Sorted by start, the latest first."));
    EXPECT_LT(screen.lineOf("● p07"), screen.lineOf("● p00"));
  });
  screen.type(U's');
  screen.then([&] { EXPECT_LT(screen.lineOf("● p00"), screen.lineOf("● p07")); });
  run();
}

TEST_F(TerminalMenu, TellsProcessesOfOneNameApart) {
  addProcess(31, "small", 290);
  screen.then([&] {
    EXPECT_TRUE(shows("small  ·   300 MB  pid 30"));
    EXPECT_TRUE(shows("small  ·   290 MB  pid 31"));
    EXPECT_FALSE(shows("600 MB  pid")) << "one that is alone needs none";
  });
  run();
}

TEST_F(TerminalMenu, SaysHowLongTheSelectedProcessHasBeenRunning) {
  machine().clock = 1 + 3'660'000'000'000;
  screen.walkTo("middle");
  screen.then([&] { EXPECT_TRUE(shows("for 1 h 1 min")); });
  run();
}

TEST_F(LongTerminalMenu, GoesToItsEnds) {
  screen.type(U'G');
  screen.then([&] { EXPECT_TRUE(selected("Quit Vorda")); });
  screen.type(U'g');
  screen.then([&] { EXPECT_TRUE(selected("p00")); });
  run();
}

TEST_F(TerminalMenu, SleepsUntilTheNextRefresh) {
  screen.wait(20);
  run();
  EXPECT_THAT(screen.waits, ElementsAre(5, 5, 5, 5));
}

TEST_F(TerminalMenu, ShowsOnlyTheStripMovingWhileASubmenuIsOpen) {
  std::string before;
  screen.walkTo("small");
  screen.press(Kind::enter);
  screen.then([&] {
    EXPECT_TRUE(running->menuIsOpen());
    EXPECT_TRUE(shows("Force Quit"));
    before = screen.picture();
    addProcess(40, "huge", 4096);
  });
  screen.wait(11);
  screen.then([&] {
    EXPECT_FALSE(shows("huge"));
    EXPECT_TRUE(shows("Force Quit"));
    EXPECT_NE(screen.picture(), before) << "the strip has one more segment";
  });
  screen.press(Kind::escape);
  screen.then([&] {
    EXPECT_FALSE(running->menuIsOpen());
    EXPECT_FALSE(shows("Force Quit"));
    EXPECT_TRUE(shows("huge")) << "a menu that closes is brought up to date";
    EXPECT_TRUE(selected("small"));
  });
  run();
}

TEST_F(TerminalMenu, OpensTheSubmenuOfTheProcessThatWasChosen) {
  screen.walkTo("small");
  screen.then([] {
    addProcess(40, "first", 5000);  // small's row moves when the submenu is opened
    machine().find(30)->footprintMB = 800;
  });
  screen.press(Kind::enter);
  screen.then([&] {
    EXPECT_TRUE(selected("small"));
    EXPECT_TRUE(shows("800 MB · pid 30"));
  });
  run();
}

TEST_F(TerminalMenu, OpensNothingForAProcessThatIsGone) {
  screen.walkTo("middle");
  screen.then([] { removeProcess(20); });
  screen.press(Kind::enter);
  screen.then([&] {
    EXPECT_FALSE(running->menuIsOpen());
    EXPECT_FALSE(shows("Full details"));
    EXPECT_FALSE(shows("middle"));
    EXPECT_FALSE(selected("small")) << "what stands in its place now";
  });
  screen.press(Kind::enter);
  screen.then([&] {
    EXPECT_FALSE(shows("Full details"));
    EXPECT_TRUE(shows("Nothing is selected. Press ↑ or ↓ first."));
  });
  screen.press(Kind::down);
  screen.then([&] {
    EXPECT_TRUE(selected("small"));
    EXPECT_FALSE(shows("Nothing is selected."));
  });
  run();
}

TEST_F(TerminalMenu, OpensNothingForALaterProcessWithTheSamePid) {
  screen.walkTo("middle");
  screen.then([] {
    machine().find(20)->identity = 2;
    machine().find(20)->arguments = {"/usr/bin/other"};
  });
  screen.press(Kind::enter);
  screen.then([&] { EXPECT_FALSE(shows("Full details")); });
  run();
}

TEST_F(TerminalMenu, QuitsAProcess) {
  screen.walkTo("middle");
  chooseQuit();
  screen.then([&] {
    EXPECT_THAT(machine().signals, ElementsAre(ScriptedSignal{20, false}));
    EXPECT_FALSE(shows("middle"));
    EXPECT_FALSE(shows("Full details"));
    EXPECT_FALSE(running->menuIsOpen());
  });
  run();
}

TEST_F(TerminalMenu, EndsNothingMoreWithTheSameKeys) {
  machine().find(20)->ignoresQuit = true;  // comes back, and another stands in its place meanwhile
  screen.walkTo("middle");
  chooseQuit();
  for (int i = 0; i < 10; ++i) screen.press(Kind::enter);
  screen.then([&] {
    EXPECT_TRUE(shows("middle"));
    EXPECT_TRUE(shows("small"));
  });
  run();
  EXPECT_THAT(machine().signals, ElementsAre(ScriptedSignal{20, false}));
}

TEST_F(TerminalMenu, SaysInALineThatAProcessIsStillRunning) {
  machine().find(20)->ignoresQuit = true;
  const std::string line = "middle is still running (pid 20). Force Quit may end it.";
  screen.walkTo("middle");
  chooseQuit();
  screen.wait(2.9);
  screen.then([&] { EXPECT_FALSE(shows("still running")); });
  screen.wait(0.2);
  screen.then([&] {
    EXPECT_EQ(screen.lineOf(line), screen.size_.height - 2) << "above the keys";
    EXPECT_EQ(screen.reversed(), "") << "nothing is selected";
  });
  screen.walkTo("middle", Kind::up);
  screen.press(Kind::enter);
  screen.then([&] { EXPECT_TRUE(shows("Asked to quit ")); });
  screen.press(Kind::escape);
  screen.then([] { removeProcess(20); });
  screen.wait(6);
  screen.then([&] { EXPECT_FALSE(shows("still running")); });
  run();
}

TEST_F(TerminalMenu, KeepsTheSelectionInSightWhenThatLineComes) {
  machine().find(10)->ignoresQuit = true;
  screen.size_ = {60, 12};
  screen.press(Kind::home);
  chooseQuit();
  screen.press(Kind::end);
  screen.wait(3);
  screen.then([&] {
    EXPECT_TRUE(shows("big is still running (pid 10)."));
    EXPECT_TRUE(selected("Quit Vorda"));
  });
  run();
}

TEST_F(TerminalMenu, OpensASubmenuOnTheDetails) {
  screen.walkTo("middle");
  screen.press(Kind::enter);
  screen.then([&] { EXPECT_TRUE(selected("Full details…")); });
  screen.press(Kind::enter);
  screen.then([&] { EXPECT_TRUE(shows("PID: 20")); });
  run();
  EXPECT_THAT(machine().signals, IsEmpty());
}

TEST_F(TerminalMenu, RefusedForceQuitDoesNothing) {
  screen.walkTo("middle");
  screen.press(Kind::enter);
  screen.walkTo("Force Quit", Kind::up);
  screen.press(Kind::enter);
  screen.then([&] {
    EXPECT_TRUE(shows("This cannot be undone."));
    EXPECT_TRUE(selected("[ Force Quit ]"));
    EXPECT_TRUE(running->menuIsOpen());
  });
  screen.press(Kind::escape);
  screen.then([&] {
    EXPECT_FALSE(shows("This cannot be undone."));
    EXPECT_TRUE(shows("middle"));
    EXPECT_FALSE(running->menuIsOpen());
  });
  run();
  EXPECT_THAT(machine().signals, IsEmpty());
}

TEST_F(TerminalMenu, AcceptedForceQuitKills) {
  screen.walkTo("middle");
  screen.press(Kind::enter);
  screen.walkTo("Force Quit", Kind::up);
  screen.press(Kind::enter);
  screen.press(Kind::enter);
  screen.then([&] {
    EXPECT_THAT(machine().signals, ElementsAre(ScriptedSignal{20, true}));
    EXPECT_FALSE(shows("middle"));
  });
  run();
}

TEST_F(TerminalMenu, ShowsOnlyTheStripMovingWhileAnAlertIsOpen) {
  screen.type(U'?');
  screen.then([&] {
    EXPECT_TRUE(running->menuIsOpen());
    addProcess(40, "huge", 4096);
  });
  screen.wait(6);
  screen.then([&] { EXPECT_FALSE(shows("huge")); });
  screen.press(Kind::escape);
  screen.then([&] {
    EXPECT_FALSE(running->menuIsOpen());
    EXPECT_TRUE(shows("huge"));
  });
  run();
}

TEST_F(TerminalMenu, SaysWhyAProcessIsProtected) {
  machine().find(20)->effectiveUid = 0;
  machine().find(20)->arguments = {"/usr/bin/ollama", "serve"};
  screen.walkTo("Ollama");
  screen.press(Kind::enter);
  screen.then([&] {
    EXPECT_TRUE(shows("Protected (root) — cannot quit from Vorda"));
    EXPECT_FALSE(shows("Force Quit"));
  });
  run();
}

TEST_F(TerminalMenu, ForgetsAProcessThatEndsWhileItsSubmenuIsOpen) {
  screen.walkTo("middle");
  screen.press(Kind::enter);
  screen.then([] { removeProcess(20); });
  screen.press(Kind::home);
  screen.press(Kind::enter);
  screen.then([&] {
    EXPECT_FALSE(shows("middle"));
    EXPECT_FALSE(shows("[ OK ]")) << "already gone is no failure";
  });
  run();
}

TEST_F(TerminalMenu, DoesNotSignalALaterProcessWithTheSamePid) {
  screen.walkTo("middle");
  screen.press(Kind::enter);
  screen.then([] { machine().find(20)->identity = 2; });
  screen.press(Kind::home);
  screen.press(Kind::enter);
  run();
  EXPECT_THAT(machine().signals, IsEmpty());
}

TEST_F(TerminalMenu, RefreshesAtOnce) {
  screen.then([] { addProcess(40, "huge", 4096); });
  screen.type(U'r');
  screen.then([&] { EXPECT_TRUE(shows("huge")); });
  run();
}

TEST_F(TerminalMenu, RefreshesUnderAnOpenSubmenu) {
  screen.walkTo("middle");
  screen.press(Kind::enter);
  screen.then([] { addProcess(40, "huge", 4096); });
  screen.type(U'r');
  screen.then([&] {
    EXPECT_TRUE(shows("huge"));
    EXPECT_TRUE(shows("pid 20"));
    EXPECT_TRUE(running->menuIsOpen());
    removeProcess(20);
  });
  screen.type(U'r');
  screen.then([&] {
    EXPECT_FALSE(shows("Full details"));
    EXPECT_FALSE(running->menuIsOpen());
  });
  run();
}

TEST_F(TerminalMenu, ChoosesTheDetailsAndNoMoreWithAHeldEnter) {
  screen.walkTo("big");
  screen.press(Kind::enter);
  screen.pause = 0.5;
  screen.press(Kind::enter);
  screen.pause = 0.03;
  for (int i = 0; i < 40; ++i) screen.press(Kind::enter);
  screen.then([&] { EXPECT_TRUE(shows("PID: 10")) << "a held key opens and closes nothing more"; });
  run();
  EXPECT_THAT(machine().signals, IsEmpty());
}

TEST_F(TerminalMenu, DoesNotAnswerAQuestionWithTheHeldEnterThatAskedIt) {
  screen.walkTo("middle");
  screen.press(Kind::enter);
  screen.walkTo("Force Quit", Kind::up);
  screen.press(Kind::enter);
  screen.pause = 0.66;  // what most keyboards wait before they repeat a key
  screen.press(Kind::enter);
  screen.pause = 0.03;
  for (int i = 0; i < 40; ++i) screen.press(Kind::enter);
  screen.then([&] { EXPECT_TRUE(shows("This cannot be undone.")); });
  run();
  EXPECT_THAT(machine().signals, IsEmpty());
}

TEST_F(TerminalMenu, AnswersAQuestionWithASecondPress) {
  screen.walkTo("middle");
  screen.press(Kind::enter);
  screen.walkTo("Force Quit", Kind::up);
  screen.press(Kind::enter);
  screen.pause = 0.8;
  screen.press(Kind::enter);
  run();
  EXPECT_THAT(machine().signals, ElementsAre(ScriptedSignal{20, true}));
}

TEST_F(TerminalMenu, ChoosesNothingThatWasTypedDuringAnAction) {
  screen.walkTo("big");
  chooseQuit();
  for (int i = 0; i < 5; ++i) screen.playLate({.kind = Kind::enter}, 0);
  run();
  EXPECT_THAT(machine().signals, ElementsAre(ScriptedSignal{10, false}));
}

TEST_F(TerminalMenu, OpensARowSoonAfterTheSelectionCameToIt) {
  screen.wait(1);
  screen.press(Kind::down);
  screen.pause = 0.31;
  screen.press(Kind::enter);
  screen.then([&] { EXPECT_TRUE(shows("Full details")); });
  run();
}

TEST_F(TerminalMenu, SaysThatAnEnterCameTooSoonAfterAMove) {
  screen.wait(1);
  screen.press(Kind::down);
  screen.pause = 0.29;
  screen.press(Kind::enter);
  screen.then([&] {
    EXPECT_FALSE(shows("Full details"));
    EXPECT_TRUE(shows("That came too soon. Press it again."));
  });
  screen.press(Kind::enter);
  screen.then([&] {
    EXPECT_TRUE(shows("Full details"));
    EXPECT_FALSE(shows("That came too soon."));
  });
  run();
}

TEST_F(TerminalMenu, StopsSayingSoAfterAMoment) {
  screen.wait(1);
  screen.press(Kind::down);
  screen.pause = 0.1;
  screen.press(Kind::enter);
  screen.wait(1.9);
  screen.then([&] { EXPECT_TRUE(shows("That came too soon.")); });
  screen.wait(0.2);
  screen.then([&] { EXPECT_FALSE(shows("That came too soon.")); });
  run();
}

TEST_F(TerminalMenu, OpensNothingThatCameUnderTheSelectionJustNow) {
  screen.walkTo("middle");
  screen.wait(3);
  screen.then([] { addProcess(40, "huge", 4096); });  // the next refresh moves the row
  screen.wait(2.1);
  screen.then([&] { EXPECT_TRUE(shows("huge")); });
  screen.pause = 0.1;
  screen.press(Kind::enter);
  screen.then([&] { EXPECT_FALSE(shows("Full details")); });
  screen.pause = 0.31;
  screen.press(Kind::enter);
  screen.then([&] { EXPECT_TRUE(shows("Full details")); });
  run();
}

struct ClickRow {
  const char* name;
  double pause;  ///< since a refresh has brought another row there
  bool counts;
};

class TerminalClicks : public TerminalMenu, public testing::WithParamInterface<ClickRow> {};

TEST_P(TerminalClicks, ChooseWhatHasStoodThere) {
  Input click{.kind = Kind::click, .x = 5};
  screen.wait(3);
  screen.then([&] {
    click.y = screen.lineOf("middle");
    addProcess(40, "huge", 4096);
  });
  screen.wait(1.99);
  screen.wait(0.02);  // the refresh
  screen.wait(GetParam().pause);
  screen.then([&] {
    ASSERT_NE(screen.lineOf("middle"), click.y);
    screen.playNow(click);
  });
  screen.then([&] { EXPECT_EQ(shows("Full details"), GetParam().counts); });
  run();
}

INSTANTIATE_TEST_SUITE_P(Table, TerminalClicks,
                         testing::Values(ClickRow{"Soon", 0.2, false},
                                         ClickRow{"Later", 0.31, true}),
                         rowName<ClickRow>);

TEST_F(TerminalMenu, IsNotHarmedByAPasteInSlowSingleBytes) {
  for (const double pause : {0.0, 0.01, 0.06, 0.11, 0.25}) {
    screen.pause = 1;
    screen.press(Kind::escape);
    screen.press(Kind::home);
    screen.wait(1);
    screen.pause = pause;
    for (int i = 0; i < 20; ++i) {
      for (const char32_t c : U"rake task kk quit jobs jj? \r\r\rkkkk\rxxxx\ryyyy\r") {
        if (c == U'\0') continue;
        if (c == U'\r') {
          screen.press(Kind::enter);
        } else {
          screen.type(c);
        }
      }
    }
  }
  bool after = false;
  screen.then([&] { after = true; });
  run();
  EXPECT_TRUE(after) << "it goes on";
  EXPECT_THAT(machine().signals, IsEmpty());
}

TEST_F(TerminalMenu, SaysThatAPasteDoesNothing) {
  screen.press(Kind::pasteBegin);
  for (int i = 0; i < 3; ++i) screen.press(Kind::enter);
  screen.then([&] {
    EXPECT_TRUE(shows("What is pasted does nothing here."));
    EXPECT_FALSE(shows("Full details"));
  });
  screen.press(Kind::pasteEnd);
  screen.press(Kind::enter);
  screen.then([&] { EXPECT_TRUE(shows("Full details")); });
  run();
}

TEST_F(TerminalMenu, EndsOnQ) {
  bool after = false;
  screen.type(U'q');
  screen.then([&] { after = true; });
  run();
  EXPECT_FALSE(after);
}

TEST_F(TerminalMenu, EndsOnItsOwnItem) {
  bool after = false;
  screen.press(Kind::end);
  screen.press(Kind::enter);
  screen.then([&] { after = true; });
  run();
  EXPECT_FALSE(after);
}

TEST_F(TerminalMenu, AnswersNoQuestionWhenTheTerminalGoesAway) {
  screen.walkTo("middle");
  screen.press(Kind::enter);
  screen.walkTo("Force Quit", Kind::up);
  screen.press(Kind::enter);  // and the script ends with the question open
  run();
  EXPECT_THAT(machine().signals, IsEmpty());
}

TEST_F(TerminalMenu, TakesNoAnswerToAQuestionThatNobodySees) {
  screen.walkTo("middle");
  screen.press(Kind::enter);
  screen.walkTo("Force Quit", Kind::up);
  screen.press(Kind::enter);
  screen.then([&] { screen.size_ = {39, 9}; });
  screen.press(Kind::redraw);
  screen.then([&] { EXPECT_TRUE(shows("Vorda needs 40 x 10")); });
  screen.press(Kind::enter);
  screen.then([&] { screen.size_ = {40, 10}; });
  screen.press(Kind::redraw);
  screen.then([&] { EXPECT_TRUE(shows("This cannot be undone.")); });
  screen.press(Kind::escape);
  run();
  EXPECT_THAT(machine().signals, IsEmpty());
}

TEST_F(TerminalMenu, KeepsTheChoiceInSightWhenALongSubmenuIsRefreshed) {
  machine().find(30)->arguments = {"/usr/bin/ollama", "serve"};
  for (const char* label : {"ollama-1", "ollama-2", "ollama-3", "ollama-4"}) {
    machine().launchAgentFiles.push_back(
        {.label = label, .path = "/units/x.service", .keepAlive = true});
    machine().loadedLaunchAgents[label] = 30;
  }
  screen.size_ = {40, 10};
  screen.walkTo("Ollama");
  screen.press(Kind::enter);
  screen.press(Kind::end);
  std::string last;
  screen.then([&] { last = screen.reversed(); });
  screen.type(U'r');
  screen.then([&] {
    EXPECT_NE(last, "");
    EXPECT_EQ(screen.reversed(), last);
  });
  screen.press(Kind::escape);
  run();
}

TEST_F(TerminalMenu, SurvivesAnySize) {
  for (int width = 0; width < 60; width += 3) {
    for (int height = 0; height < 30; height += 3) {
      screen.then([&, width, height] { screen.size_ = {width, height}; });
      screen.press(Kind::redraw);
      screen.press(Kind::enter);
      screen.press(Kind::end);
      screen.press(Kind::escape);
      screen.type(U'?');
      screen.press(Kind::escape);
    }
  }
  run();
}

TEST_F(TerminalMenu, UnloadsALaunchAgent) {
  machine().launchAgentFiles = {{.label = "ollama", .path = "/units/ollama.service"}};
  machine().loadedLaunchAgents = {{"ollama", 30}};
  screen.walkTo("ollama  ·  on");
  screen.press(Kind::enter);
  screen.press(Kind::enter);
  screen.then([&] { EXPECT_TRUE(shows("Unload ollama?")); });
  screen.press(Kind::enter);
  screen.then([&] {
    EXPECT_THAT(machine().serviceCalls, ElementsAre("stop ollama 1"));
    EXPECT_FALSE(shows("Unload ollama?"));
  });
  run();
}

TEST_F(TerminalMenu, LoadsALaunchAgent) {
  machine().launchAgentFiles = {
      {.label = "ollama", .path = "/units/ollama.service", .keepAlive = true}};
  screen.walkTo("ollama  ·  off");
  screen.press(Kind::enter);
  screen.press(Kind::enter);
  screen.then([&] { EXPECT_THAT(machine().serviceCalls, ElementsAre("start ollama 1")); });
  run();
}

}  // namespace
