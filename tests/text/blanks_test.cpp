#include "text/blanks.h"

#include <gtest/gtest.h>

#include "fakes/row_name.h"

namespace {

struct Row {
  const char* name;
  const char* text;
  const char* expected;
};

class WithSingleBlanks : public testing::TestWithParam<Row> {};

TEST_P(WithSingleBlanks, HasNoTwoInARow) {
  EXPECT_EQ(text::withSingleBlanks(GetParam().text), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(
    Table, WithSingleBlanks,
    testing::Values(Row{"Empty", "", ""}, Row{"None", "train.py", "train.py"},
                    Row{"Single", "LoRA fine-tune", "LoRA fine-tune"},
                    Row{"Figures", "x  ·   9.9 GB  ·  pid 1  [A]", "x · 9.9 GB · pid 1 [A]"},
                    Row{"Many", "a          b", "a b"}, Row{"AtTheEnds", "  a  ", " a "},
                    Row{"NoBreakSpaces", "a\u00A0\u202F\u2007b", "a b"},
                    Row{"OfEveryWidth", "a\u2000\u2003\u2009\u200A\u205Fb", "a b"},
                    Row{"OneOfTwoColumns", "a\u3000b", "a b"},
                    Row{"OghamSpace", "a\u1680\u1680b", "a b"},
                    Row{"HangulFillers", "a\u115F\u1160\u3164\uFFA0b", "a b"},
                    Row{"BrailleBlank", "a\u2800\u2800b", "a b"},
                    Row{"MusicalBlank", "a\U0001D159\U0001D159b", "a b"},
                    Row{"JoinersBetween", "a \u200D \u200C b", "a b"},
                    Row{"SelectorsBetween", "a \uFE0F \U000E0100 \u180B \u034F b", "a b"},
                    Row{"JoinersInAWord", "می\u200Cخواهم 👩‍👩‍👧",
                        "می\u200Cخواهم 👩‍👩‍👧"},
                    Row{"AccentOnABlank", "a \u0301 b", "a \u0301 b"}),
    rowName<Row>);

}  // namespace
