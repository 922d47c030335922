#include "frontends/terminal/terminal_front_end.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "frontends/terminal/terminal_menu_fixture.h"

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

using Kind = terminal::Input::Kind;

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

TEST_F(TerminalMenu, HasAFrameBeforeThereIsAMenu) {
  for (const terminal::Size size : {terminal::Size{80, 24}, terminal::Size{20, 4}}) {
    screen.size_ = size;
    terminal::TerminalFrontEnd frontEnd(screen);
    frontEnd.showFrame();
    EXPECT_EQ(shows("Quit"), size.width == 80) << screen.picture();
  }
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

TEST_F(TerminalMenu, RingsOnceAndSaysInALineThatMemoryIsShort) {
  machine().memory.availableBytes = 1e10;
  machine().memory.stalls = platform::MemoryStalls{30, 2};
  screen.wait(12);
  screen.then([&] {
    EXPECT_EQ(screen.rings, 0);
    EXPECT_FALSE(shows("wait for memory"));
  });
  screen.wait(60);
  screen.then([&] {
    EXPECT_EQ(screen.rings, 1);
    EXPECT_TRUE(shows("Processes wait for memory: Some 30%, all 2% of the last 10 s."));
    machine().memory.stalls.reset();
  });
  screen.wait(70);
  screen.then([&] { EXPECT_FALSE(shows("wait for memory")); });
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

TEST_F(TerminalMenu, SaysWhereTheSelectedProcessWorks) {
  machine().find(20)->folder = "/home/ada/runs/token=abcdefghijklmnop\033[2J";
  machine().find(30)->folder = "/srv/elsewhere";
  machine().find(30)->effectiveUid = 1001;
  machine().find(30)->arguments = {"/usr/bin/ollama", "serve"};  // shown, whoever's it is
  screen.size_.width = 160;
  screen.walkTo("middle");
  screen.then([&] {
    EXPECT_TRUE(shows("Owner: ada · for 0 min · in /home/ada/runs/token=•••"));
    machine().find(20)->folder = "/home/ada";
    machine().find(20)->footprintMB = 120;  // else the menu stays as it is
  });
  screen.wait(6);
  screen.then([&] {
    EXPECT_TRUE(shows(" · in /home/ada")) << "asked again with each menu";
    EXPECT_FALSE(shows("runs"));
    machine().foldersRead = 0;
  });
  screen.walkTo("Ollama");
  screen.then([&] {
    EXPECT_FALSE(shows("elsewhere")) << "not asked of others' processes";
    EXPECT_EQ(machine().foldersRead, 0);
  });
  run();
}

TEST_F(TerminalMenu, SaysNoFolderOfALaterProcessWithThePid) {
  machine().find(20)->folder = "/home/ada";
  screen.then([] { machine().find(20)->identity = 2; });
  screen.walkTo("middle");
  screen.then([&] { EXPECT_FALSE(shows("/home/ada")); });
  run();
}

TEST_F(TerminalMenu, CopiesTheMaskedCommandOrShowsItPlain) {
  machine().find(20)->arguments = {"/usr/bin/middle", "--api-key", "sk-123456789", "a\nb"};
  const std::string command = "/usr/bin/middle --api-key ••• a\uFFFDb";
  screen.walkTo("middle");
  screen.type(U'c');
  screen.then([&] {
    EXPECT_THAT(screen.copied, ElementsAre(command));
    EXPECT_TRUE(shows("Copied, if the terminal lets it. C shows it plain."));
  });
  screen.press(Kind::enter);
  screen.press(Kind::enter);
  screen.then([&] { EXPECT_TRUE(shows("─ c copies the command, C shows it ─")); });
  screen.type(U'C');
  screen.then([&] { EXPECT_THAT(screen.shownPlain, ElementsAre(command)); });
  screen.type(U'c');
  screen.then([&] {
    EXPECT_EQ(screen.copied.size(), 2U);
    EXPECT_TRUE(shows("─ Copied, if the terminal"));
  });
  screen.press(Kind::escape);
  screen.walkTo("About");
  screen.type(U'c');
  screen.then([&] { EXPECT_TRUE(shows("There is no command here.")); });
  screen.press(Kind::enter);
  screen.type(U'c');
  screen.then([&] { EXPECT_EQ(screen.copied.size(), 2U) << "nor in other alerts"; });
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

TEST_F(TerminalMenu, OpensASubmenuOnTheDetails) {
  screen.walkTo("middle");
  screen.press(Kind::enter);
  screen.then([&] { EXPECT_TRUE(selected("Full details…")); });
  screen.press(Kind::enter);
  screen.then([&] { EXPECT_TRUE(shows("PID: 20")); });
  run();
  EXPECT_THAT(machine().signals, IsEmpty());
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

}  // namespace
