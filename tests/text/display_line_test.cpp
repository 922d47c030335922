#include "text/display_line.h"

#include <gtest/gtest.h>

#include <string>

#include "fakes/row_name.h"

namespace {

using namespace std::string_literals;

struct DisplayLineRow {
  const char* name;
  std::string text;
  std::string shown;
};

class DisplayLine : public testing::TestWithParam<DisplayLineRow> {};

TEST_P(DisplayLine, IsOneHarmlessLine) {
  EXPECT_EQ(text::displayLine(GetParam().text), GetParam().shown);
}

INSTANTIATE_TEST_SUITE_P(
    Replaced, DisplayLine,
    testing::Values(DisplayLineRow{"LineFeed", "a\nPID 1", "a\uFFFDPID 1"},
                    DisplayLineRow{"CarriageReturn", "a\rb", "a\uFFFDb"},
                    DisplayLineRow{"CarriageReturnLineFeed", "a\r\nb", "a\uFFFD\uFFFDb"},
                    DisplayLineRow{"Tab", "a\tb", "a\uFFFDb"},
                    DisplayLineRow{"Nul", "a\0b"s, "a\uFFFDb"},
                    DisplayLineRow{"TerminalEscape", "\x1B[2J", "\uFFFD[2J"},
                    DisplayLineRow{"Delete", "a\x7F", "a\uFFFD"},
                    DisplayLineRow{"FirstC1", "a\u0080", "a\uFFFD"},
                    DisplayLineRow{"NextLine",
                                   "a\u0085"
                                   "b",
                                   "a\uFFFDb"},
                    DisplayLineRow{"C1ControlSequenceIntroducer", "\u009B2J", "\uFFFD2J"},
                    DisplayLineRow{"LineSeparator", "a\u2028b", "a\uFFFDb"},
                    DisplayLineRow{"ParagraphSeparator", "a\u2029b", "a\uFFFDb"},
                    DisplayLineRow{"ArabicLetterMark", "\u061C", "\uFFFD"},
                    DisplayLineRow{"DirectionMarks", "\u200E\u200F", "\uFFFD\uFFFD"},
                    DisplayLineRow{"EmbeddingsAndOverrides", "\u202A\u202B\u202C\u202D\u202E",
                                   "\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD"},
                    DisplayLineRow{"Isolates", "\u2066\u2067\u2068\u2069",
                                   "\uFFFD\uFFFD\uFFFD\uFFFD"},
                    DisplayLineRow{"ByteOrderMark", "\uFEFFa", "\uFFFDa"},
                    DisplayLineRow{"ZeroWidthSpace", "a\u200Bb", "a\uFFFDb"},
                    DisplayLineRow{"WordJoiner", "a\u2060b", "a\uFFFDb"},
                    DisplayLineRow{"SoftHyphen", "a\u00ADb", "a\uFFFDb"},
                    DisplayLineRow{"MongolianVowelSeparator", "\u180E", "\uFFFD"},
                    DisplayLineRow{"DeprecatedFormat", "\u206A\u206F", "\uFFFD\uFFFD"},
                    DisplayLineRow{"InterlinearAnnotation", "\uFFF9\uFFFB", "\uFFFD\uFFFD"},
                    DisplayLineRow{"TagCharacters", "\U000E0001\U000E0041", "\uFFFD\uFFFD"},
                    DisplayLineRow{"BytesThatAreNotUtf8", "a\xFF\xC3(", "a\uFFFD\uFFFD("},
                    DisplayLineRow{"CutSequence", "a\xE2\x80", "a\uFFFD\uFFFD"},
                    DisplayLineRow{"OverlongLineFeed", "\xC0\x8A", "\uFFFD\uFFFD"},
                    DisplayLineRow{"EncodedSurrogate", "\xED\xA0\x80", "\uFFFD\uFFFD\uFFFD"}),
    rowName<DisplayLineRow>);

INSTANTIATE_TEST_SUITE_P(
    Kept, DisplayLine,
    testing::Values(DisplayLineRow{"Empty", "", ""},
                    DisplayLineRow{"Ascii", " ~Python: train.py", " ~Python: train.py"},
                    DisplayLineRow{"TheProgramsOwnGlyphs", "★ x  ·  …  🔒 ↺ — “’”",
                                   "★ x  ·  …  🔒 ↺ — “’”"},
                    DisplayLineRow{"JoinedEmoji", "👩‍👩‍👧", "👩‍👩‍👧"},
                    DisplayLineRow{"EmojiPresentation", "❤️", "❤️"},
                    DisplayLineRow{"Flag", "🇩🇪", "🇩🇪"},
                    DisplayLineRow{"NonJoiner", "می\u200Cخواهم", "می\u200Cخواهم"},
                    DisplayLineRow{"RightToLeftScript", "שלום", "שלום"},
                    DisplayLineRow{"ArabicNumberSign", "\u0600\u06DD", "\u0600\u06DD"},
                    DisplayLineRow{"CombiningAccent", "e\u0301", "e\u0301"},
                    DisplayLineRow{"NoBreakSpace", "a\u00A0b", "a\u00A0b"},
                    DisplayLineRow{"ReplacementItself", "\uFFFD", "\uFFFD"}),
    rowName<DisplayLineRow>);

TEST(DisplayLines, KeepTheLineFeedsAndNothingElse) {
  EXPECT_EQ(text::displayLines("a\nb\r\u2028c\n"), "a\nb\uFFFD\uFFFDc\n");
}

std::string times(std::size_t count, std::string_view text) {
  std::string result;
  for (std::size_t i = 0; i < count; ++i) result += text;
  return result;
}

constexpr std::string_view kMark = "\u0301";    // two bytes
constexpr std::string_view kJoiner = "\u200D";  // three
constexpr std::string_view kPrefix = "\u0600";  // an Arabic number sign: joins what follows it

INSTANTIATE_TEST_SUITE_P(
    DearCharacters, DisplayLine,
    testing::Values(
        DisplayLineRow{"MarksThatFit", "e" + times(31, kMark) + "x", "e" + times(31, kMark) + "x"},
        DisplayLineRow{"MarksThatDoNot", "e" + times(32, kMark) + "x",
                       "e" + times(31, kMark) + "x"},
        DisplayLineRow{"SixtyThousandMarks", "e" + times(60000, kMark) + "x",
                       "e" + times(31, kMark) + "x"},
        DisplayLineRow{"EveryCharacterHasItsOwn", times(3, "e" + times(99, kMark)),
                       times(3, "e" + times(31, kMark))},
        DisplayLineRow{"MarksOfTwoLengths",
                       "e" + times(31, kMark) + "\U0001D165" + std::string(kMark),
                       "e" + times(31, kMark)},
        DisplayLineRow{"MarksAlone", times(60000, kMark), times(32, kMark)},
        DisplayLineRow{"Joiners", "x" + times(99, kJoiner) + "y", "x" + times(21, kJoiner) + "y"},
        DisplayLineRow{"VariationSelectors", "❤" + times(99, "\uFE0F"), "❤" + times(20, "\uFE0F")},
        DisplayLineRow{"JoinedEmoji", times(99, "👩" + std::string(kJoiner)) + "x",
                       times(9, "👩" + std::string(kJoiner)) + "x"},
        DisplayLineRow{"JoinedEmojiBeforeAnother", times(9, "👩" + std::string(kJoiner)) + "👩👩",
                       times(8, "👩" + std::string(kJoiner)) + "👩👩"},
        DisplayLineRow{"Prefixes", times(99, kPrefix) + "xy", "\uFFFDy"},
        DisplayLineRow{"HangulThatNeverEnds",
                       times(99, "\u1100") + "\u1161\u11A8" + times(99, "\u1100"),
                       "\uFFFD" + times(21, "\u1100")}),
    rowName<DisplayLineRow>);

TEST(DisplayLines, HoldNoDearCharacterEither) {
  EXPECT_EQ(text::displayLines("e" + times(99, kMark) + "\n" + times(99, kMark)),
            "e" + times(31, kMark) + "\n" + times(32, kMark));
}

TEST(DisplayLines, HaveAnEnd) {
  const std::string line = times(200, "x") + "\n";
  EXPECT_EQ(text::displayLines(times(81, line)), times(81, line));
  EXPECT_EQ(text::displayLines(times(200, line)), times(81, line) + times(100, "x") + "…");
  EXPECT_EQ(text::displayLine(times(20'000, "x")), times(16 * 1024 - 3, "x") + "…");
}

class DisplayName : public testing::TestWithParam<DisplayLineRow> {};

TEST_P(DisplayName, IsOneHarmlessLineOf1024BytesAtMost) {
  EXPECT_EQ(text::displayName(GetParam().text), GetParam().shown);
  EXPECT_LE(text::displayName(GetParam().text).size(), 1024U);
}

INSTANTIATE_TEST_SUITE_P(
    Table, DisplayName,
    testing::Values(DisplayLineRow{"Empty", "", ""},
                    DisplayLineRow{"Short", "LoRA fine-tune", "LoRA fine-tune"},
                    DisplayLineRow{"Harmless", "a\n\xFF\u202E", "a\uFFFD\uFFFD\uFFFD"},
                    DisplayLineRow{"Of1024", times(1024, "x"), times(1024, "x")},
                    DisplayLineRow{"Of1025", times(1025, "x"), times(1021, "x") + "…"},
                    DisplayLineRow{"MuchLonger", times(100000, "x"), times(1021, "x") + "…"},
                    DisplayLineRow{"OfReplacedBytes", times(1024, "\xFF"),
                                   times(340, "\uFFFD") + "…"},
                    DisplayLineRow{"NeverSplitsACharacter", "x" + times(60, "👩‍👩‍👧"),
                                   "x" + times(56, "👩‍👩‍👧") + "…"},
                    DisplayLineRow{"DearCharacters", times(99, "e" + times(99, kMark)),
                                   times(16, "e" + times(31, kMark)) + "…"},
                    DisplayLineRow{"DearCharacterAtTheEnd", times(1022, "x") + times(99, kMark),
                                   times(1021, "x") + "…"},
                    DisplayLineRow{"MarkAtTheBeginning", "\u0301x", "◌\u0301x"},
                    DisplayLineRow{"JoinerAtTheBeginning", "\u200Dx", "◌\u200Dx"},
                    DisplayLineRow{"ControlAtTheBeginning", "\x1B\u0301x", "\uFFFD\u0301x"}),
    rowName<DisplayLineRow>);

}  // namespace
