// What quitting, forcing, loading and unloading come to in a terminal.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "frontends/terminal/terminal_menu_fixture.h"

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

using Kind = terminal::Input::Kind;

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
