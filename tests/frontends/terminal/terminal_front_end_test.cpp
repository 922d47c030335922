#include "frontends/terminal/terminal_front_end.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "fakes/scripted_platform.h"
#include "frontends/terminal/scripted_screen.h"
#include "ui/status_bar_controller.h"

using terminal::Input;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

using Kind = Input::Kind;

/// The real menu and its actions on a scripted machine, used at a scripted terminal.
class TerminalMenu : public testing::Test {
 protected:
  TerminalMenu() {
    resetMachine();
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
    EXPECT_NE(screen.picture(), before) << "the strip has one more bar";
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
    EXPECT_TRUE(selected("small")) << "what stands in its place now";
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

TEST_F(TerminalMenu, ChoosesOneActionWithAHeldEnter) {
  screen.walkTo("big");
  chooseQuit();
  screen.pause = 0.03;
  for (int i = 0; i < 20; ++i) screen.press(Kind::enter);
  run();
  EXPECT_THAT(machine().signals, ElementsAre(ScriptedSignal{10, false}));
}

TEST_F(TerminalMenu, ChoosesNothingMoreThatWasTypedDuringAnAction) {
  screen.walkTo("big");
  chooseQuit();
  for (int i = 0; i < 5; ++i) screen.playLate({.kind = Kind::enter}, 0);
  run();
  EXPECT_THAT(machine().signals, ElementsAre(ScriptedSignal{10, false}));
}

TEST_F(TerminalMenu, TakesAnEnterAtOnceAfterAnotherKey) {
  screen.walkTo("middle");
  screen.press(Kind::enter);
  screen.walkTo("Force Quit", Kind::up);
  screen.pause = 0.03;
  screen.press(Kind::enter);
  screen.press(Kind::escape);  // no to the question
  screen.press(Kind::enter);
  screen.then([&] { EXPECT_TRUE(shows("pid 20")); });
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
    machine().jobFiles.push_back({.label = label, .path = "/units/x.service", .keepAlive = true});
    machine().loadedJobs[label] = 30;
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

TEST_F(TerminalMenu, UnloadsAnAgent) {
  machine().jobFiles = {{.label = "ollama", .path = "/units/ollama.service"}};
  machine().loadedJobs = {{"ollama", 30}};
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

TEST_F(TerminalMenu, LoadsAnAgent) {
  machine().jobFiles = {{.label = "ollama", .path = "/units/ollama.service", .keepAlive = true}};
  screen.walkTo("ollama  ·  off");
  screen.press(Kind::enter);
  screen.press(Kind::enter);
  screen.then([&] { EXPECT_THAT(machine().serviceCalls, ElementsAre("start ollama 1")); });
  run();
}

}  // namespace
