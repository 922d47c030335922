#include "frontends/terminal/signs.h"

#include <gtest/gtest.h>

#include "fakes/row_name.h"

namespace {

struct Row {
  const char* name;
  const char* text;
  const char* ascii;
};

class AsciiSigns : public testing::TestWithParam<Row> {};

TEST_P(AsciiSigns, StandForUnicode) {
  EXPECT_EQ(terminal::inAscii(GetParam().text), GetParam().ascii);
}

constexpr Row kRows[] = {
    {"AsciiStays", "System  4.0 GB [x]", "System  4.0 GB [x]"},
    {"Star", "★ Ollama Server", "* Ollama Server"},
    {"KeepAlive", "agent  ·  on ↺", "agent  -  on ~"},
    {"Lock", "dockerd 🔒", "dockerd [locked]"},
    {"Ellipsis", "Full details…", "Full details..."},
    {"Dash", "— Top RAM —", "- Top RAM -"},
    {"Quotes", "“Docker’s”", "\"Docker's\""},
    {"BulletAndArrow", "• Open → Quit", "* Open -> Quit"},
    {"Arrows", "↑ ↓ ← →", "^ v <- ->"},
    {"Title", "Vorda²", "Vorda2"},
    {"Copyright", "© 2026", "(c) 2026"},
    {"OtherLetters", "模é", "??"},
    {"LetterWithAnAccentOfItsOwn", "e\u0301x", "?x"},
    {"EmojiFamily", "👨\u200D👩x", "?x"},
    {"Replacement", "a\uFFFD", "a?"},
};

INSTANTIATE_TEST_SUITE_P(Table, AsciiSigns, testing::ValuesIn(kRows), rowName<Row>);

TEST(Signs, MakeForeignTextHarmless) {
  EXPECT_EQ(terminal::Signs::unicode().line("a\nb\x1B[2J"), "a\uFFFDb\uFFFD[2J");
  EXPECT_EQ(terminal::Signs::ascii().line("a\nb\x1B[2J"), "a?b?[2J");
  EXPECT_EQ(terminal::Signs::unicode().lines("a\nb\x1B"), "a\nb\uFFFD");
}

TEST(Signs, AreAsciiWhereTheTerminalIs) {
  const terminal::Signs signs = terminal::Signs::ascii();
  for (const auto sign :
       {signs.dot, signs.ellipsis, signs.divider, signs.emptyTrack, signs.pressureLow,
        signs.pressureMedium, signs.pressureHigh, signs.horizontal, signs.vertical, signs.topLeft,
        signs.topRight, signs.bottomLeft, signs.bottomRight, signs.thumb, signs.upDown}) {
    EXPECT_EQ(sign, terminal::inAscii(sign));
  }
}

}  // namespace
