#include "text/display_line.h"

#include <gtest/gtest.h>

#include <string>

#include "fakes/row_name.h"

namespace {

using namespace std::string_literals;

struct Row {
  const char* name;
  std::string text;
  std::string shown;
};

class DisplayLine : public testing::TestWithParam<Row> {};

TEST_P(DisplayLine, IsOneHarmlessLine) {
  EXPECT_EQ(text::displayLine(GetParam().text), GetParam().shown);
}

INSTANTIATE_TEST_SUITE_P(
    Replaced, DisplayLine,
    testing::Values(
        Row{"LineFeed", "a\nPID 1", "a\uFFFDPID 1"}, Row{"CarriageReturn", "a\rb", "a\uFFFDb"},
        Row{"CarriageReturnLineFeed", "a\r\nb", "a\uFFFD\uFFFDb"}, Row{"Tab", "a\tb", "a\uFFFDb"},
        Row{"Nul", "a\0b"s, "a\uFFFDb"}, Row{"TerminalEscape", "\x1B[2J", "\uFFFD[2J"},
        Row{"Delete", "a\x7F", "a\uFFFD"}, Row{"FirstC1", "a\u0080", "a\uFFFD"},
        Row{"NextLine",
            "a\u0085"
            "b",
            "a\uFFFDb"},
        Row{"C1ControlSequenceIntroducer", "\u009B2J", "\uFFFD2J"},
        Row{"LineSeparator", "a\u2028b", "a\uFFFDb"},
        Row{"ParagraphSeparator", "a\u2029b", "a\uFFFDb"},
        Row{"ArabicLetterMark", "\u061C", "\uFFFD"},
        Row{"DirectionMarks", "\u200E\u200F", "\uFFFD\uFFFD"},
        Row{"EmbeddingsAndOverrides", "\u202A\u202B\u202C\u202D\u202E",
            "\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD"},
        Row{"Isolates", "\u2066\u2067\u2068\u2069", "\uFFFD\uFFFD\uFFFD\uFFFD"},
        Row{"ByteOrderMark", "\uFEFFa", "\uFFFDa"}, Row{"ZeroWidthSpace", "a\u200Bb", "a\uFFFDb"},
        Row{"WordJoiner", "a\u2060b", "a\uFFFDb"}, Row{"SoftHyphen", "a\u00ADb", "a\uFFFDb"},
        Row{"MongolianVowelSeparator", "\u180E", "\uFFFD"},
        Row{"DeprecatedFormat", "\u206A\u206F", "\uFFFD\uFFFD"},
        Row{"InterlinearAnnotation", "\uFFF9\uFFFB", "\uFFFD\uFFFD"},
        Row{"TagCharacters", "\U000E0001\U000E0041", "\uFFFD\uFFFD"},
        Row{"BytesThatAreNotUtf8", "a\xFF\xC3(", "a\uFFFD\uFFFD("},
        Row{"CutSequence", "a\xE2\x80", "a\uFFFD\uFFFD"},
        Row{"OverlongLineFeed", "\xC0\x8A", "\uFFFD\uFFFD"},
        Row{"EncodedSurrogate", "\xED\xA0\x80", "\uFFFD\uFFFD\uFFFD"}),
    rowName<Row>);

INSTANTIATE_TEST_SUITE_P(
    Kept, DisplayLine,
    testing::Values(Row{"Empty", "", ""}, Row{"Ascii", " ~Python: train.py", " ~Python: train.py"},
                    Row{"TheProgramsOwnGlyphs", "★ x  ·  …  🔒 ↺ — “’”", "★ x  ·  …  🔒 ↺ — “’”"},
                    Row{"JoinedEmoji", "👩‍👩‍👧", "👩‍👩‍👧"},
                    Row{"EmojiPresentation", "❤️", "❤️"}, Row{"Flag", "🇩🇪", "🇩🇪"},
                    Row{"NonJoiner", "می\u200Cخواهم", "می\u200Cخواهم"},
                    Row{"RightToLeftScript", "שלום", "שלום"},
                    Row{"ArabicNumberSign", "\u0600\u06DD", "\u0600\u06DD"},
                    Row{"CombiningAccent", "e\u0301", "e\u0301"},
                    Row{"NoBreakSpace", "a\u00A0b", "a\u00A0b"},
                    Row{"ReplacementItself", "\uFFFD", "\uFFFD"}),
    rowName<Row>);

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
        Row{"MarksThatFit", "e" + times(31, kMark) + "x", "e" + times(31, kMark) + "x"},
        Row{"MarksThatDoNot", "e" + times(32, kMark) + "x", "e" + times(31, kMark) + "x"},
        Row{"SixtyThousandMarks", "e" + times(60000, kMark) + "x", "e" + times(31, kMark) + "x"},
        Row{"EveryCharacterHasItsOwn", times(3, "e" + times(99, kMark)),
            times(3, "e" + times(31, kMark))},
        Row{"MarksOfTwoLengths", "e" + times(31, kMark) + "\U0001D165" + std::string(kMark),
            "e" + times(31, kMark)},
        Row{"MarksAlone", times(60000, kMark), times(32, kMark)},
        Row{"Joiners", "x" + times(99, kJoiner) + "y", "x" + times(21, kJoiner) + "y"},
        Row{"VariationSelectors", "❤" + times(99, "\uFE0F"), "❤" + times(20, "\uFE0F")},
        Row{"JoinedEmoji", times(99, "👩" + std::string(kJoiner)) + "x",
            times(9, "👩" + std::string(kJoiner)) + "x"},
        Row{"JoinedEmojiBeforeAnother", times(9, "👩" + std::string(kJoiner)) + "👩👩",
            times(8, "👩" + std::string(kJoiner)) + "👩👩"},
        Row{"Prefixes", times(99, kPrefix) + "xy", "\uFFFDy"},
        Row{"HangulThatNeverEnds", times(99, "\u1100") + "\u1161\u11A8" + times(99, "\u1100"),
            "\uFFFD" + times(21, "\u1100")}),
    rowName<Row>);

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

class DisplayName : public testing::TestWithParam<Row> {};

TEST_P(DisplayName, IsOneHarmlessLineOf1024BytesAtMost) {
  EXPECT_EQ(text::displayName(GetParam().text), GetParam().shown);
  EXPECT_LE(text::displayName(GetParam().text).size(), 1024U);
}

INSTANTIATE_TEST_SUITE_P(
    Table, DisplayName,
    testing::Values(Row{"Empty", "", ""}, Row{"Short", "LoRA fine-tune", "LoRA fine-tune"},
                    Row{"Harmless", "a\n\xFF\u202E", "a\uFFFD\uFFFD\uFFFD"},
                    Row{"Of1024", times(1024, "x"), times(1024, "x")},
                    Row{"Of1025", times(1025, "x"), times(1021, "x") + "…"},
                    Row{"MuchLonger", times(100000, "x"), times(1021, "x") + "…"},
                    Row{"OfReplacedBytes", times(1024, "\xFF"), times(340, "\uFFFD") + "…"},
                    Row{"NeverSplitsACharacter", "x" + times(60, "👩‍👩‍👧"),
                        "x" + times(56, "👩‍👩‍👧") + "…"},
                    Row{"DearCharacters", times(99, "e" + times(99, kMark)),
                        times(16, "e" + times(31, kMark)) + "…"},
                    Row{"DearCharacterAtTheEnd", times(1022, "x") + times(99, kMark),
                        times(1021, "x") + "…"},
                    Row{"MarkAtTheBeginning", "\u0301x", "◌\u0301x"},
                    Row{"JoinerAtTheBeginning", "\u200Dx", "◌\u200Dx"},
                    Row{"ControlAtTheBeginning", "\x1B\u0301x", "\uFFFD\u0301x"}),
    rowName<Row>);

}  // namespace
