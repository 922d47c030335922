#include "text/blanks.h"

#include <gtest/gtest.h>

#include "fakes/row_name.h"

namespace {

struct BlanksRow {
  const char* name;
  const char* text;
  const char* expected;
};

class WithSingleBlanks : public testing::TestWithParam<BlanksRow> {};

TEST_P(WithSingleBlanks, HasNoTwoInARow) {
  EXPECT_EQ(text::withSingleBlanks(GetParam().text), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(
    Table, WithSingleBlanks,
    testing::Values(BlanksRow{"Empty", "", ""}, BlanksRow{"None", "train.py", "train.py"},
                    BlanksRow{"Single", "LoRA fine-tune", "LoRA fine-tune"},
                    BlanksRow{"Figures", "x  ·   9.9 GB  ·  pid 1  [A]", "x · 9.9 GB · pid 1 [A]"},
                    BlanksRow{"Many", "a          b", "a b"},
                    BlanksRow{"AtTheEnds", "  a  ", " a "},
                    BlanksRow{"NoBreakSpaces", "a\u00A0\u202F\u2007b", "a b"},
                    BlanksRow{"OfEveryWidth", "a\u2000\u2003\u2009\u200A\u205Fb", "a b"},
                    BlanksRow{"OneOfTwoColumns", "a\u3000b", "a b"},
                    BlanksRow{"OghamSpace", "a\u1680\u1680b", "a b"},
                    BlanksRow{"HangulFillers", "a\u115F\u1160\u3164\uFFA0b", "a b"},
                    BlanksRow{"BrailleBlank", "a\u2800\u2800b", "a b"},
                    BlanksRow{"MusicalBlank", "a\U0001D159\U0001D159b", "a b"},
                    BlanksRow{"JoinersBetween", "a \u200D \u200C b", "a b"},
                    BlanksRow{"SelectorsBetween", "a \uFE0F \U000E0100 \u180B \u034F b", "a b"},
                    BlanksRow{"JoinersInAWord", "می\u200Cخواهم 👩‍👩‍👧",
                              "می\u200Cخواهم 👩‍👩‍👧"},
                    BlanksRow{"AccentOnABlank", "a \u0301 b", "a \u0301 b"}),
    rowName<BlanksRow>);

}  // namespace
