#include "frontends/terminal/alert_view.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sstream>

#include "fakes/row_name.h"
#include "frontends/terminal/cell_text.h"
#include "frontends/terminal/grid_picture.h"
#include "frontends/terminal/keys_help.h"

using terminal::AlertView;
using terminal::CellGrid;
using terminal::Input;
using terminal::Size;
using testing::HasSubstr;

namespace {

using Kind = Input::Kind;

const terminal::Look kPlain{.glyphs = terminal::Glyphs::unicode(), .colored = false};

const Alert kQuestion{.messageText = "Force Quit?",
                      .informativeText = "Ollama Server\nPID 7\n\nThis cannot be undone.",
                      .style = Alert::Style::warning,
                      .buttons = {"Force Quit", "Cancel"}};
const Alert kNotice{.messageText = "Failed", .informativeText = "PID 7 is owned by grace."};

std::string pictureOf(const AlertView& view, Size size) {
  CellGrid grid(size);
  view.paint(grid);
  return pictureOf(grid);
}

struct AlertViewRow {
  const char* name;
  Alert alert;
  std::vector<Input> keys;
  std::optional<int> answer;
};

class AlertKeys : public testing::TestWithParam<AlertViewRow> {};

TEST_P(AlertKeys, Answer) {
  AlertView view(GetParam().alert, kPlain);
  view.layOut({80, 24});
  std::optional<int> answer;
  for (const Input& input : GetParam().keys) {
    ASSERT_FALSE(answer) << "answered too early";
    answer = view.handle(input);
  }
  EXPECT_EQ(answer, GetParam().answer);
}

constexpr int kFirst = kAlertFirstButtonReturn;

INSTANTIATE_TEST_SUITE_P(
    Table, AlertKeys,
    testing::Values(
        AlertViewRow{"EnterIsTheFirst", kQuestion, {{Kind::enter}}, kFirst},
        AlertViewRow{"EscapeIsCancel", kQuestion, {{Kind::escape}}, kFirst + 1},
        AlertViewRow{"TabMovesOn", kQuestion, {{Kind::tab}, {Kind::enter}}, kFirst + 1},
        AlertViewRow{"RightMovesOn", kQuestion, {{Kind::right}, {Kind::enter}}, kFirst + 1},
        AlertViewRow{
            "LeftMovesBack", kQuestion, {{Kind::tab}, {Kind::left}, {Kind::enter}}, kFirst},
        AlertViewRow{"TabGoesAround", kQuestion, {{Kind::tab}, {Kind::tab}, {Kind::enter}}, kFirst},
        AlertViewRow{"BackTabGoesAround", kQuestion, {{Kind::backTab}, {Kind::enter}}, kFirst + 1},
        AlertViewRow{"DownMovesOn", kQuestion, {{Kind::down}, {Kind::enter}}, kFirst + 1},
        AlertViewRow{
            "SpaceChooses", kQuestion, {{.kind = Kind::character, .character = U' '}}, kFirst},
        AlertViewRow{"OtherLettersDoNothing",
                     kQuestion,
                     {{.kind = Kind::character, .character = U'q'},
                      {.kind = Kind::character, .character = U'r'}},
                     std::nullopt},
        AlertViewRow{"WithoutButtonsEnterCloses", kNotice, {{Kind::enter}}, kFirst},
        AlertViewRow{"WithoutButtonsEscapeDismisses", kNotice, {{Kind::escape}}, kAlertDismissed},
        AlertViewRow{"OneButtonKeepsTheFocus", kNotice, {{Kind::tab}, {Kind::enter}}, kFirst}),
    rowName<AlertViewRow>);

TEST(AlertPicture, HoldsTextAndButtonsInTheirOrder) {
  AlertView view(kQuestion, kPlain);
  view.layOut({44, 12});
  EXPECT_EQ(pictureOf(view, {44, 12}),
            "\n"
            "   ┌────────────────────────────────────┐\n"
            "   │ Force Quit?                        │\n"
            "   │                                    │\n"
            "   │ Ollama Server                      │\n"
            "   │ PID 7                              │\n"
            "   │                                    │\n"
            "   │ This cannot be undone.             │\n"
            "   │                                    │\n"
            "   │         [ Force Quit ]  [ Cancel ] │\n"
            "   └────────────────────────────────────┘\n"
            "\n");
}

TEST(AlertPicture, ShowsAWholeQuestionInTheSmallestTerminal) {
  AlertView view(kQuestion, kPlain);
  view.layOut({40, 10});
  const std::string picture = pictureOf(view, {40, 10});
  for (const char* text : {"Force Quit?", "Ollama Server", "PID 7", "This cannot be undone.",
                           "[ Force Quit ]  [ Cancel ]"}) {
    EXPECT_THAT(picture, HasSubstr(text));
  }
}

TEST(AlertPicture, HasOneButtonWhereNoneIsNamed) {
  AlertView view(kNotice, kPlain);
  view.layOut({80, 24});
  EXPECT_THAT(pictureOf(view, {80, 24}), HasSubstr("[ OK ]"));
}

TEST(AlertPicture, ShowsForeignTextHarmlessly) {
  AlertView view({.messageText = "evil\n\x1B[2J", .informativeText = "a\x07\nb"}, kPlain);
  view.layOut({80, 24});
  const std::string picture = pictureOf(view, {80, 24});
  EXPECT_THAT(picture, HasSubstr("evil\uFFFD\uFFFD[2J"));
  EXPECT_THAT(picture, HasSubstr("a\uFFFD "));
}

TEST(AlertPicture, CutsAVeryLongTitle) {
  AlertView view({.messageText = std::string(5000, 'x'), .informativeText = "text"}, kPlain);
  view.layOut({80, 24});
  const std::string picture = pictureOf(view, {80, 24});
  EXPECT_THAT(picture, HasSubstr("x…"));
  EXPECT_THAT(picture, HasSubstr("text"));
}

class LongAlert : public testing::Test {
 protected:
  LongAlert() : view({.messageText = "Details", .informativeText = lines()}, kPlain) {
    view.layOut(kSize);
  }
  static std::string lines() {
    std::string text;
    for (int i = 0; i < 100; ++i) text += "line " + std::to_string(i) + ".\n";
    return text + "the end";
  }
  bool shows(const std::string& text) const {
    return pictureOf(view, kSize).find(text) != std::string::npos;
  }

  static constexpr Size kSize{80, 24};
  AlertView view;
};

TEST_F(LongAlert, Scrolls) {
  EXPECT_TRUE(shows("line 0."));
  EXPECT_FALSE(shows("the end"));
  view.handle({.kind = Kind::down});
  EXPECT_FALSE(shows("line 0."));
  EXPECT_TRUE(shows("line 1."));
  view.handle({.kind = Kind::end});
  EXPECT_TRUE(shows("the end"));
  view.handle({.kind = Kind::wheelUp});
  EXPECT_FALSE(shows("the end"));
  view.handle({.kind = Kind::home});
  EXPECT_TRUE(shows("line 0."));
  view.handle({.kind = Kind::pageDown});
  EXPECT_FALSE(shows("line 0."));
  EXPECT_TRUE(shows("[ OK ]")) << "the buttons stay";
}

TEST_F(LongAlert, StaysInItsTextWhenTheWindowGrows) {
  view.handle({.kind = Kind::end});
  view.layOut({80, 60});
  const std::string picture = pictureOf(view, {80, 60});
  EXPECT_THAT(picture, HasSubstr("the end"));
  EXPECT_THAT(picture, HasSubstr("line 50.")) << "it fills the window";
}

TEST(AlertClicks, AnswerOnAButtonAlone) {
  AlertView view(kQuestion, kPlain);
  view.layOut({44, 12});
  EXPECT_EQ(view.handle({.kind = Kind::click, .x = 5, .y = 2}), std::nullopt);
  EXPECT_EQ(view.handle({.kind = Kind::click, .x = 14, .y = 9}), kFirst);
  EXPECT_EQ(view.handle({.kind = Kind::click, .x = 35, .y = 9}), kFirst + 1);
  EXPECT_EQ(view.handle({.kind = Kind::click, .x = 28, .y = 9}), std::nullopt) << "the gap";
}

TEST(KeysAlert, FitsTheWidthOfTheSmallestTerminal) {
  const std::string text = terminal::keysAlert().informativeText;
  std::istringstream table(text.substr(0, text.find("\n\n")));
  int lines = 0;
  for (std::string line; std::getline(table, line); ++lines) {
    EXPECT_LE(terminal::columnsOf(line), 36) << line;
  }
  EXPECT_GT(lines, 5);
}

}  // namespace
