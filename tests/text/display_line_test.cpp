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
                    Row{"TheProgramsOwnSigns", "★ x  ·  …  🔒 ↺ — “’”", "★ x  ·  …  🔒 ↺ — “’”"},
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

}  // namespace
