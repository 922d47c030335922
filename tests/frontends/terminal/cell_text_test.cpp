#include "frontends/terminal/cell_text.h"

#include <gtest/gtest.h>

#include "fakes/row_name.h"

namespace {

struct CellTextRow {
  const char* name;
  const char* text;
  const char* shown;
  int columns;
};

class CellText : public testing::TestWithParam<CellTextRow> {};

TEST_P(CellText, IsMeasuredAsTerminalsDo) {
  std::string shown;
  std::string_view rest = GetParam().text;
  while (!rest.empty()) {
    const terminal::CellText cell = terminal::firstCellText(rest);
    shown += cell.bytes;
    rest.remove_prefix(cell.source.size());
  }
  EXPECT_EQ(shown, GetParam().shown);
  EXPECT_EQ(terminal::columnsOf(GetParam().text), GetParam().columns);
}

constexpr CellTextRow kCellTextRows[] = {
    {"Ascii", "Vorda", "Vorda", 5},
    {"Nothing", "", "", 0},
    {"Superscript", "Vorda²", "Vorda²", 6},
    {"StarDotAndArrow", "★·↺…—", "★·↺…—", 5},
    {"Lock", "🔒", "🔒", 2},
    {"Chinese", "模型", "模型", 4},
    {"Hangul", "한글", "한글", 4},
    {"HangulInJamo", "\u1112\u1161\u11AB", "\u1112\u1161\u11AB", 2},
    {"FullWidth", "Ａ", "Ａ", 2},
    {"AccentOnItsOwn", "e\u0301", "e\u0301", 1},
    {"AccentWithNothingBelow", "\u0301a", " \u0301a", 2},
    {"MoreAccentsThanACellTakes", "a\u0301\u0302\u0303\u0304\u0305\u0306b",
     "a\u0301\u0302\u0303\u0304b", 2},
    {"DevanagariVowelSignTakesAColumn", "का", "का", 2},
    {"Emoji", "😀", "😀", 2},
    {"EmojiFamilyShowsItsFirst", "👨\u200D👩\u200D👧x", "👨x", 3},
    {"SkinToneIsDropped", "👍🏽x", "👍x", 3},
    {"FlagIsSpelt", "🇩🇪x", "DEx", 3},
    {"TextSelectorIsDropped", "❤\uFE0Fx", "❤x", 2},
    {"Keycap", "1\uFE0F\u20E3x", "1\u20E3x", 2},
    {"JoinerBetweenLettersIsDropped", "a\u200Db", "ab", 2},
    {"NotUtf8", "a\xFFz", "a\uFFFDz", 3},
};

INSTANTIATE_TEST_SUITE_P(Table, CellText, testing::ValuesIn(kCellTextRows), rowName<CellTextRow>);

struct FitRow {
  const char* name;
  const char* text;
  int columns;
  const char* fitted;
};

class FittedText : public testing::TestWithParam<FitRow> {};

TEST_P(FittedText, NeverTakesMoreColumns) {
  const std::string fitted = terminal::fitted(GetParam().text, GetParam().columns);
  EXPECT_EQ(fitted, GetParam().fitted);
  EXPECT_LE(terminal::columnsOf(fitted), GetParam().columns);
}

constexpr FitRow kFitRows[] = {
    {"Fits", "Vorda", 5, "Vorda"},
    {"OneTooMany", "Vorda²", 5, "Vord…"},
    {"WideCharacterThatStraddles", "模型", 3, "模…"},
    {"WideCharacterBeforeTheCut", "模型服", 4, "模…"},
    {"AccentStaysWithItsLetter", "e\u0301abc", 2, "e\u0301…"},
    {"OneColumn", "abc", 1, "…"},
    {"NoColumn", "abc", 0, ""},
};

INSTANTIATE_TEST_SUITE_P(Table, FittedText, testing::ValuesIn(kFitRows), rowName<FitRow>);

TEST(FittedTextInAscii, LosesTheEllipsisWhereItDoesNotFit) {
  EXPECT_EQ(terminal::fitted("abcdef", 5, "..."), "ab...");
  EXPECT_EQ(terminal::fitted("abcdef", 2, "..."), "ab");
}

struct WrapRow {
  const char* name;
  const char* text;
  int columns;
  std::vector<std::string> lines;
};

class WrappedText : public testing::TestWithParam<WrapRow> {};

TEST_P(WrappedText, BreaksAtBlanks) {
  EXPECT_EQ(terminal::wrapped(GetParam().text, GetParam().columns), GetParam().lines);
}

INSTANTIATE_TEST_SUITE_P(
    Table, WrappedText,
    testing::Values(WrapRow{"Fits", "one two", 7, {"one two"}},
                    WrapRow{"TwoLines", "one two", 6, {"one", "two"}},
                    WrapRow{"BlankAtTheEdge", "one two", 3, {"one", "two"}},
                    WrapRow{"LongWord", "abcdefgh ij", 4, {"abcd", "efgh", "ij"}},
                    WrapRow{"OwnLineBreaks", "a\n\nb", 9, {"a", "", "b"}},
                    WrapRow{"IndentStays", "  a b", 9, {"  a b"}},
                    WrapRow{"IndentBeforeALongWord", "  abcdef", 4, {"  ab", "cdef"}},
                    WrapRow{"InnerBlanksStay", "a  b c", 4, {"a  b", "c"}},
                    WrapRow{"BlanksAtABreakGo", "ab    cd", 4, {"ab", "cd"}},
                    WrapRow{"BlanksAlone", "     ", 3, {"   "}},
                    WrapRow{"WideCharacters", "模型服务", 5, {"模型", "服务"}},
                    WrapRow{"Nothing", "", 5, {""}}, WrapRow{"NoRoom", "abc", 1, {}}),
    rowName<WrapRow>);

}  // namespace
