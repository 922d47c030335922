// Lists that are longer than what is shown of them: opened, filtered, searched, sorted.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "frontends/terminal/terminal_menu_fixture.h"

namespace {

using Kind = terminal::Input::Kind;

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

TEST_F(LongTerminalMenu, FunctionKeysAreNoWordsOfAFilter) {
  type("/p1");
  screen.play({.kind = Kind::function, .character = 1});
  screen.then([&] { EXPECT_TRUE(shows("Filter what is shown")) << "the keys"; });
  screen.press(Kind::escape);
  screen.then([&] { EXPECT_TRUE(shows("Filter: p1   Esc ends it")); });
  run();
}

TEST_F(LongTerminalMenu, EndsOnF10WhileAFilterIsTyped) {
  type("/p1");
  screen.play({.kind = Kind::function, .character = 10});
  screen.then([] { ADD_FAILURE() << "it goes on"; });
  run();
}

TEST_F(LongTerminalMenu, KeepsAFilterThatNothingMatches) {
  type("/zz");
  screen.press(Kind::enter);
  screen.then([&] { EXPECT_TRUE(shows("Filter: zz   Esc ends it")); });
  screen.press(Kind::enter);
  screen.then([&] { EXPECT_TRUE(shows("Nothing is selected.")) << "here it was meant for a row"; });
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
    EXPECT_TRUE(shows("— By start, the latest first"));
    EXPECT_LT(screen.lineOf("— By start"), screen.lineOf("p19"));
    EXPECT_LT(screen.lineOf("p19"), screen.lineOf("p12"));
    EXPECT_FALSE(shows("p11")) << "the smallest are the latest";
    EXPECT_TRUE(selected("p19")) << "where the largest was";
  });
  screen.type(U's');
  screen.then([&] {
    EXPECT_LT(screen.lineOf("— Top RAM"), screen.lineOf("● p00"));
    EXPECT_LT(screen.lineOf("● p00"), screen.lineOf("p07"));
    EXPECT_FALSE(shows("p08"));
  });
  run();
}

TEST_F(LongTerminalMenu, IsSortedByGraphicsCardsWhereThereAreAny) {
  constexpr std::uint64_t kGB = 1 << 30;
  machine().gpus.devices.push_back(
      {"0000:61:00.0", "H100", platform::GpuCapacity{80 * kGB, 9 * kGB}});
  machine().gpus.uses.push_back({103, 0, 2 * kGB, machine().clock});
  machine().gpus.uses.push_back({105, 0, 7 * kGB, machine().clock});
  screen.type(U's');
  screen.then([&] {
    EXPECT_TRUE(shows("Sorted by GPU memory."));
    EXPECT_LT(screen.lineOf("● p05"), screen.lineOf("● p03"));
    EXPECT_LT(screen.lineOf("● p03"), screen.lineOf("● p00"));
  });
  screen.type(U's');
  screen.then([&] { EXPECT_TRUE(shows("Sorted by name.")); });
  run();
}

TEST_F(LongTerminalMenu, FoldsFamiliesBeforeItIsCut) {
  // p00 and all up to p09 are one piece of work.
  for (std::size_t i = 0; i < 10; ++i) machine().processes[i].parent = i == 0 ? 1 : 100;
  screen.then([&] {
    EXPECT_TRUE(shows("f Fold"));
    EXPECT_FALSE(shows("p16"));
  });
  screen.type(U'f');
  screen.then([&] {
    EXPECT_TRUE(shows("f Unfold"));
    EXPECT_TRUE(shows("p00  (10)"));
    EXPECT_TRUE(selected("p00")) << "the selection is still about the same process";
    EXPECT_TRUE(shows("p16"));
    EXPECT_TRUE(shows("… and 3 more"));
  });
  screen.wait(6);
  screen.then([&] { EXPECT_TRUE(shows("p00  (10)")) << "and so after a refresh"; });
  screen.type(U'/');
  type("p0");
  screen.then([&] { EXPECT_TRUE(shows("p09")) << "words are looked for in each member"; });
  screen.press(Kind::escape);
  screen.then([&] { EXPECT_TRUE(shows("p00  (10)")); });
  screen.type(U'f');
  screen.then([&] {
    EXPECT_TRUE(shows("p07"));
    EXPECT_FALSE(shows("(10)"));
    EXPECT_TRUE(shows("… and 12 more"));
  });
  run();
}

TEST_F(LongTerminalMenu, GoesToItsEnds) {
  screen.type(U'G');
  screen.then([&] { EXPECT_TRUE(selected("Quit Vorda")); });
  screen.type(U'g');
  screen.then([&] { EXPECT_TRUE(selected("p00")); });
  run();
}

}  // namespace
