#include <gtest/gtest.h>

#include <ostream>

#include "fakes/row_name.h"
#include "scanner/process_scanner.h"
#include "tools/joined.h"

namespace {

struct FlagRow {
  const char* name;
  std::vector<std::string> arguments;
  std::vector<std::string_view> names;
  std::optional<std::string> value;
};

std::ostream& operator<<(std::ostream& out, const FlagRow& row) {
  return out << joined(row.arguments);
}

class Flag : public testing::TestWithParam<FlagRow> {};

TEST_P(Flag, IsTheValueOfTheEarliestArgumentThatMatches) {
  const FlagRow& row = GetParam();
  EXPECT_EQ(ProcessScanner::flag(row.arguments, row.names), row.value);
}

INSTANTIATE_TEST_SUITE_P(
    All, Flag,
    testing::Values(
        FlagRow{"EqualsSignFirst", {"--model=a", "--model", "b"}, {"--model"}, "a"},
        FlagRow{"LastWithoutValue", {"x", "--model"}, {"--model"}, std::nullopt},
        FlagRow{"NextArgument", {"x", "--model", "b"}, {"--model"}, "b"},
        FlagRow{"NextArgumentIsAnOption", {"--model", "--port"}, {"--model"}, "--port"},
        FlagRow{"NextArgumentIsItself", {"--model", "--model"}, {"--model"}, "--model"},
        FlagRow{"NextArgumentIsEmpty", {"--model", ""}, {"--model"}, ""},
        FlagRow{"EmptyValue", {"--model="}, {"--model"}, ""},
        FlagRow{"ValueWithEqualsSign", {"--model=a=b"}, {"--model"}, "a=b"},
        FlagRow{"EarliestArgumentWins", {"-m", "b", "--model", "a"}, {"--model", "-m"}, "b"},
        FlagRow{
            "LongerOptionIsAnother", {"--models", "b", "--models=c"}, {"--model"}, std::nullopt},
        FlagRow{"CaseMatters", {"--MODEL", "b"}, {"--model"}, std::nullopt},
        FlagRow{"LastOfOneNameAfterAnother", {"-m=a", "--model"}, {"--model", "-m"}, "a"},
        FlagRow{"LastPassedOverForAnEarlierName", {"--model"}, {"--model", "-m"}, std::nullopt},
        FlagRow{"NamesInTheirOrder", {"--a=b=c"}, {"--a=b", "--a"}, "c"},
        FlagRow{"EmptyName", {"=x"}, {""}, "x"},
        FlagRow{"NoArguments", {}, {"--model"}, std::nullopt},
        FlagRow{"NoNames", {"--model", "a"}, {}, std::nullopt}),
    rowName<FlagRow>);

}  // namespace
