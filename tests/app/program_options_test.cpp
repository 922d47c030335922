#include "app/program_options.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "fakes/row_name.h"

namespace {

struct ProgramOptionsRow {
  const char* name;
  std::vector<const char*> arguments;
  Output output;
  std::string problem;
};

class ProgramOptionsOf : public testing::TestWithParam<ProgramOptionsRow> {};

TEST_P(ProgramOptionsOf, SayWhatIsWanted) {
  const ProgramOptions options = programOptions(GetParam().arguments);
  EXPECT_EQ(options.problem, GetParam().problem);
  if (GetParam().problem.empty()) {
    EXPECT_EQ(options.output, GetParam().output);
  }
}

const std::string kOnlyOne =
    "only one of --help, --version, --text, --json and --bar can be given (see vorda --help)";

INSTANTIATE_TEST_SUITE_P(
    Table, ProgramOptionsOf,
    testing::Values(
        ProgramOptionsRow{"None", {}, Output::menu, ""},
        ProgramOptionsRow{"Help", {"--help"}, Output::help, ""},
        ProgramOptionsRow{"Version", {"--version"}, Output::version, ""},
        ProgramOptionsRow{"Text", {"--text"}, Output::text, ""},
        ProgramOptionsRow{"Json", {"--json"}, Output::json, ""},
        ProgramOptionsRow{"Bar", {"--bar"}, Output::bar, ""},
        ProgramOptionsRow{"WatchedBar", {"--bar", "--watch"}, Output::watchedBar, ""},
        ProgramOptionsRow{"WatchFirst", {"--watch", "--bar"}, Output::watchedBar, ""},
        ProgramOptionsRow{"Twice", {"--json", "--json"}, Output::json, ""},
        ProgramOptionsRow{"Two", {"--json", "--text"}, {}, kOnlyOne},
        ProgramOptionsRow{
            "WatchAlone", {"--watch"}, {}, "--watch goes with --bar (see vorda --help)"},
        ProgramOptionsRow{
            "WatchedJson", {"--json", "--watch"}, {}, "--watch goes with --bar (see vorda --help)"},
        ProgramOptionsRow{"Abbreviated", {"--js"}, {}, "unknown option '--js' (see vorda --help)"},
        ProgramOptionsRow{"OfOneLetter", {"-h"}, {}, "unknown option '-h' (see vorda --help)"},
        ProgramOptionsRow{
            "WithAValue", {"--json=1"}, {}, "unknown option '--json=1' (see vorda --help)"},
        ProgramOptionsRow{"Word", {"top"}, {}, "unexpected argument 'top' (see vorda --help)"},
        ProgramOptionsRow{"Empty", {""}, {}, "unexpected argument '' (see vorda --help)"},
        ProgramOptionsRow{"SteersTheTerminal",
                          {"-\033[2J\n"},
                          {},
                          "unknown option '-\uFFFD[2J\uFFFD' (see vorda --help)"}),
    rowName<ProgramOptionsRow>);

TEST(ProgramOptions, AnArgumentWithoutAnEndIsCut) {
  const std::string argument(100'000, '-');
  const std::vector<const char*> arguments{argument.c_str()};
  EXPECT_LT(programOptions(arguments).problem.size(), 1'100U);
}

TEST(HelpText, NamesEveryOption) {
  for (const char* option : {"--text", "--json", "--bar", "--watch", "--help", "--version"}) {
    EXPECT_NE(helpText().find(option), std::string::npos) << option;
  }
}

}  // namespace
