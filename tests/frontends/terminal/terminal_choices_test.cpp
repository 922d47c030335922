// Which keys, clicks and pastes choose something, and which come too soon, too often or unmeant.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "fakes/row_name.h"
#include "frontends/terminal/terminal_menu_fixture.h"

using terminal::Input;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

using Kind = terminal::Input::Kind;

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

}  // namespace
