#include <gtest/gtest.h>

#include <ostream>
#include <string>

#include "fakes/row_name.h"
#include "scanner/process_scanner.h"

namespace {

using ProcessScanner::redactSecrets;

struct RedactionRow {
  const char* name;
  const char* line;
  const char* redacted;
};

std::ostream& operator<<(std::ostream& out, const RedactionRow& row) {
  return out << row.line;
}

class Redaction : public testing::TestWithParam<RedactionRow> {};

TEST_P(Redaction, HidesEveryOptionNamedLikeASecret) {
  EXPECT_EQ(redactSecrets(GetParam().line), GetParam().redacted);
}

INSTANTIATE_TEST_SUITE_P(
    Options, Redaction,
    testing::Values(
        RedactionRow{"Token", "python serve.py --token abc123", "python serve.py --api-key •••"},
        RedactionRow{"TwoInAnyCase", "--API_KEY sk-1 --token t", "--api-key ••• --api-key •••"},
        RedactionRow{"ApiKeyTogether", "x --apikey a y", "x --api-key ••• y"},
        RedactionRow{"ApiKeyWithDash", "x --api-key a y", "x --api-key ••• y"},
        RedactionRow{"Password", "x --Password a y", "x --api-key ••• y"},
        RedactionRow{"Secret", "x --secret a y", "x --api-key ••• y"},
        RedactionRow{"Auth", "x --auth a y", "x --api-key ••• y"},
        RedactionRow{"Key", "x --key a y", "x --api-key ••• y"},
        RedactionRow{"BehindOtherText", "x--key a y", "x--api-key ••• y"},
        RedactionRow{"ThreeDashes", "---key a", "---api-key •••"},
        RedactionRow{"ValueIsAnOption", "--token --secret x", "--api-key ••• x"},
        RedactionRow{"SecondOnlyAfterTheFirst", "--key --key --key a",
                     "--api-key ••• --api-key •••"}),
    rowName<RedactionRow>);

INSTANTIATE_TEST_SUITE_P(
    OtherTexts, Redaction,
    testing::Values(RedactionRow{"Empty", "", ""}, RedactionRow{"NoOption", "vim a-b", "vim a-b"},
                    RedactionRow{"OneDash", "x -key a", "x -key a"},
                    RedactionRow{"WithEqualsSign", "x --token=abc", "x --token=abc"},
                    RedactionRow{"LongerName", "x --keyfile a", "x --keyfile a"},
                    RedactionRow{"LongerNameWithDash", "x --auth-token a", "x --auth-token a"},
                    RedactionRow{"NoValue", "x --token", "x --token"},
                    RedactionRow{"BlanksAlone", "x --token  ", "x --token  "}),
    rowName<RedactionRow>);

INSTANTIATE_TEST_SUITE_P(
    WhiteSpace, Redaction,
    testing::Values(RedactionRow{"Several", "--key \t\n a b", "--api-key ••• b"},
                    RedactionRow{"VerticalTab", "--key\va\fb", "--api-key •••\fb"},
                    RedactionRow{"NoBreakSpace", "--key\u00A0a\u00A0b", "--api-key •••\u00A0b"},
                    RedactionRow{"NextLine", "--key\u0085a\u0085b", "--api-key •••\u0085b"},
                    RedactionRow{"Ogham", "--key\u1680a\u1680b", "--api-key •••\u1680b"},
                    RedactionRow{"EnQuad", "--key\u2000a\u2000b", "--api-key •••\u2000b"},
                    RedactionRow{"HairSpace", "--key\u200Aa\u200Ab", "--api-key •••\u200Ab"},
                    RedactionRow{"LineSeparator", "--key\u2028a\u2029b", "--api-key •••\u2029b"},
                    RedactionRow{"NarrowNoBreak", "--key\u202Fa\u202Fb", "--api-key •••\u202Fb"},
                    RedactionRow{"Mathematical", "--key\u205Fa\u205Fb", "--api-key •••\u205Fb"},
                    RedactionRow{"Ideographic", "--key\u3000秘密\u3000b", "--api-key •••\u3000b"},
                    RedactionRow{"ZeroWidthIsNone", "--key\u200Ba", "--key\u200Ba"},
                    RedactionRow{"UnitSeparatorIsNone",
                                 "--key\x1F"
                                 "a",
                                 "--key\x1F"
                                 "a"}),
    rowName<RedactionRow>);

TEST(RedactSecrets, HidesValuesThatAreNotUtf8) {
  EXPECT_EQ(redactSecrets("a\xFF --key \xFFsecret\xE2\x80 b\xFE"), "a\xFF --api-key ••• b\xFE");
}

TEST(RedactSecrets, KeepsNulBytes) {
  const std::string line("a\0--key b\0c d", 13);
  EXPECT_EQ(redactSecrets(line), std::string("a\0--api-key ••• d", 23));
}

}  // namespace
