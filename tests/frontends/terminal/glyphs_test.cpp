#include "frontends/terminal/glyphs.h"

#include <gtest/gtest.h>

#include "fakes/row_name.h"

namespace {

struct GlyphsRow {
  const char* name;
  const char* text;
  const char* ascii;
};

class AsciiGlyphs : public testing::TestWithParam<GlyphsRow> {};

TEST_P(AsciiGlyphs, StandForUnicode) {
  EXPECT_EQ(terminal::inAscii(GetParam().text), GetParam().ascii);
}

constexpr GlyphsRow kGlyphsRows[] = {
    {"AsciiStays", "System  4.0 GB [x]", "System  4.0 GB [x]"},
    {"OwnGlyphs", "★ agent  ·  on ↺", "* agent  -  on ~"},
    {"OtherLetters", "模é", "??"},
    {"LetterWithAnAccentOfItsOwn", "e\u0301x", "?x"},
    {"EmojiFamily", "👨\u200D👩x", "?x"},
    {"Replacement", "a\uFFFD", "a?"},
};

INSTANTIATE_TEST_SUITE_P(Table, AsciiGlyphs, testing::ValuesIn(kGlyphsRows), rowName<GlyphsRow>);

TEST(Glyphs, MakeForeignTextHarmless) {
  EXPECT_EQ(terminal::Glyphs::unicode().line("a\nb\x1B[2J"), "a\uFFFDb\uFFFD[2J");
  EXPECT_EQ(terminal::Glyphs::ascii().line("a\nb\x1B[2J"), "a?b?[2J");
  EXPECT_EQ(terminal::Glyphs::unicode().lines("a\nb\x1B"), "a\nb\uFFFD");
}

TEST(Glyphs, AreAsciiWhereTheTerminalIs) {
  const terminal::Glyphs glyphs = terminal::Glyphs::ascii();
  for (const auto glyph : {glyphs.dot, glyphs.ellipsis, glyphs.divider, glyphs.emptyTrack,
                           glyphs.pressureLow, glyphs.pressureMedium, glyphs.pressureHigh,
                           glyphs.horizontal, glyphs.vertical, glyphs.topLeft, glyphs.topRight,
                           glyphs.bottomLeft, glyphs.bottomRight, glyphs.thumb, glyphs.upDown}) {
    EXPECT_EQ(glyph, terminal::inAscii(glyph));
  }
}

}  // namespace
