// How the real program is started where there is neither a terminal nor a display.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/wait.h>

#include <algorithm>
#include <filesystem>
#include <string>
#include <vector>

#include "fakes/row_name.h"
#include "tools/background_program.h"
#include "tools/child_process.h"
#include "tools/temp_folder.h"
#include "tools/without_proc.h"

namespace {

using testing::ContainsRegex;
using testing::StartsWith;

const BackgroundProgram::Environment kNoDisplay{
    {"DISPLAY", {}}, {"WAYLAND_DISPLAY", {}}, {"LC_ALL", "C.UTF-8"}};

TEST(ProgramStart, WithoutADisplayPrintsTheMenuAndEnds) {
  BackgroundProgram program({VORDA}, kNoDisplay);
  EXPECT_EQ(program.firstLine().substr(0, 1), "[") << "the strip";
  EXPECT_EQ(program.wait(), 0);
}

TEST(ProgramStart, NobodysNameIsPrintedAsFigures) {
  const ChildProcess forger(playProcess(
      {"--memory", "200"}, {"/opt/x  ·   9.9 GB  ·  pid 1\u3000\u3000[A]", "vllm", "serve"}));
  const std::string pid = "pid " + std::to_string(forger.pid());
  const std::string menu = BackgroundProgram({VORDA}, kNoDisplay).output();
  EXPECT_THAT(menu, ContainsRegex("\n★ x · 9.9 GB · pid 1 \\[A\\] +·   2[0-9][0-9] MB +·  " + pid));
}

TEST(ProgramStart, NobodysNameIsALineWithoutAnEnd) {
  std::string name = "/opt/e";
  for (int i = 0; i < 30'000; ++i) name += "\u0301";
  const ChildProcess dear(playProcess({"--memory", "200"}, {name, "vllm", "serve"}));
  const std::string pid = "pid " + std::to_string(dear.pid());
  const std::string menu = BackgroundProgram({VORDA}, kNoDisplay).output();
  EXPECT_THAT(menu, ContainsRegex("\n★ e(\u0301){31} +·   2[0-9][0-9] MB +·  " + pid));
}

TEST(ProgramStart, WhereTheLocaleIsNotUtf8PrintsAscii) {
  const ChildProcess server(playProcess({"--memory", "60"}, {"vllm", "serve", "m"}));
  BackgroundProgram program({VORDA}, {{"DISPLAY", {}}, {"WAYLAND_DISPLAY", {}}, {"LC_ALL", "C"}});
  const std::string menu = program.output();
  EXPECT_TRUE(std::ranges::all_of(menu, [](char c) { return static_cast<signed char>(c) >= 0; }));
  EXPECT_THAT(menu,
              ContainsRegex("\n\\* .* +- +[67][0-9] MB +-  pid " + std::to_string(server.pid())));
}

TEST(ProgramStart, WithoutProcSaysSoAndFails) {
  if (const auto reason = whyProcStays(); !reason.empty()) GTEST_SKIP() << reason;
  BackgroundProgram program(withoutProc(VORDA), kNoDisplay);
  const auto status = program.wait();
  ASSERT_TRUE(status && WIFEXITED(*status));
  EXPECT_EQ(WEXITSTATUS(*status), 1);
  EXPECT_EQ(program.output(), "");
  EXPECT_EQ(program.errorOutput(), "vorda: no process can be seen: /proc is not mounted\n");
}

TEST(ProgramStart, AFoldersControlCharactersAreNotPrinted) {
  const TempFolder folder;
  folder.write("a\033[2Jb/vorda-tray", "no program");
  const auto place = folder / "a\033[2Jb";
  std::filesystem::permissions(place / "vorda-tray", std::filesystem::perms::owner_all);
  std::filesystem::copy_file(VORDA, place / "vorda");
  BackgroundProgram program({"/bin/sh", "-c", "exec \"$0\" > /dev/null", place / "vorda"},
                            {{"DISPLAY", ":4711"}});
  EXPECT_EQ(program.errorOutput(), "vorda: can't start " + folder.path().string() +
                                       "/a\uFFFD[2Jb/vorda-tray: Exec format error\n");
}

struct BadOptionRow {
  const char* name;
  std::vector<std::string> options;
  const char* problem;
};

class BadOption : public testing::TestWithParam<BadOptionRow> {};

TEST_P(BadOption, IsOneLineAndStatusTwo) {
  std::vector<std::string> command{VORDA};
  command.insert(command.end(), GetParam().options.begin(), GetParam().options.end());
  BackgroundProgram program(command, kNoDisplay);
  const auto status = program.wait();
  ASSERT_TRUE(status && WIFEXITED(*status));
  EXPECT_EQ(WEXITSTATUS(*status), 2);
  EXPECT_EQ(program.firstLine(), "");
  EXPECT_EQ(program.errorOutput(),
            "vorda: " + std::string(GetParam().problem) + " (see vorda --help)\n");
}

INSTANTIATE_TEST_SUITE_P(
    Table, BadOption,
    testing::Values(
        BadOptionRow{"Unknown", {"--colour"}, "unknown option '--colour'"},
        BadOptionRow{"WithAValue", {"--bar=1"}, "unknown option '--bar=1'"},
        BadOptionRow{"Word", {"help"}, "unexpected argument 'help'"},
        BadOptionRow{"Empty", {""}, "unexpected argument ''"},
        BadOptionRow{"AfterAGoodOne", {"--help", "x"}, "unexpected argument 'x'"},
        BadOptionRow{"SteersTheTerminal", {"--\033[2J"}, "unknown option '--\uFFFD[2J'"},
        BadOptionRow{"WatchAlone", {"--watch"}, "--watch goes with --bar"},
        BadOptionRow{"Two",
                     {"--text", "--json"},
                     "only one of --help, --version, --text, --json and --bar can be given"}),
    rowName<BadOptionRow>);

const BackgroundProgram::Environment kDesktop{{"DISPLAY", ":4711"}, {"WAYLAND_DISPLAY", {}}};

struct StartOptionRow {
  const char* name;
  std::vector<std::string> options;
  const char* beginning;  ///< of what is printed, whatever display there is
};

class StartOption : public testing::TestWithParam<StartOptionRow> {};

TEST_P(StartOption, PrintsAndEnds) {
  std::vector<std::string> command{VORDA};
  command.insert(command.end(), GetParam().options.begin(), GetParam().options.end());
  BackgroundProgram program(command, kDesktop);
  EXPECT_THAT(program.output(), StartsWith(GetParam().beginning));
  EXPECT_EQ(program.wait(), 0);
  EXPECT_EQ(program.errorOutput(), "");
}

INSTANTIATE_TEST_SUITE_P(Table, StartOption,
                         testing::Values(StartOptionRow{"NoneIntoAPipe", {}, "["},
                                         StartOptionRow{"Text", {"--text"}, "["},
                                         StartOptionRow{"Json", {"--json"}, "{\"format\":1,"},
                                         StartOptionRow{"Bar", {"--bar"}, "{\"text\":\""},
                                         StartOptionRow{"Help", {"--help"}, "Usage: vorda "},
                                         StartOptionRow{"Version", {"--version"}, "vorda "}),
                         rowName<StartOptionRow>);

TEST(ProgramStart, TheWatchedBarEndsWithItsReader) {
  BackgroundProgram program({"/bin/sh", "-c", "\"$0\" --bar --watch | head -n 1", VORDA},
                            kNoDisplay);
  EXPECT_THAT(program.output(), StartsWith("{\"text\":\""));
  EXPECT_EQ(program.wait(), 0);
  EXPECT_EQ(program.errorOutput(), "");
}

/// Somewhere where nothing can be written to, as a shell opens it.
struct UnwritableRow {
  const char* name;
  std::string opens;
  const char* problem;
};

class Unwritable : public testing::TestWithParam<UnwritableRow> {};

TEST_P(Unwritable, IsOneLineAndStatusOne) {
  struct Option {
    const char* option;
    std::string what;
  };
  const Option options[] = {{"", "the menu"},       {"--text", "the menu"},
                            {"--json", "the JSON"}, {"--bar", "the line"},
                            {"--help", "the help"}, {"--version", "the version"}};
  for (const auto& [option, what] : options) {
    SCOPED_TRACE(option);
    const TempFolder folder;
    BackgroundProgram program({"/bin/sh", "-c", GetParam().opens + "; exec \"$0\" $1 >&5 5>&-",
                               VORDA, option, folder / "pipe"},
                              kNoDisplay);
    const auto status = program.wait();
    ASSERT_TRUE(status && WIFEXITED(*status));
    EXPECT_EQ(WEXITSTATUS(*status), 1);
    EXPECT_EQ(program.errorOutput(),
              "vorda: can't write " + what + ": " + GetParam().problem + "\n");
  }
}

INSTANTIATE_TEST_SUITE_P(
    Table, Unwritable,
    testing::Values(UnwritableRow{"FullDisk", "exec 5> /dev/full", "No space left on device"},
                    UnwritableRow{"PipeWithoutAReader",
                                  R"(mkfifo "$2"; exec 4<> "$2" 5> "$2" 4>&-)", "Broken pipe"},
                    UnwritableRow{"FileToRead", "exec 5< /dev/null", "Bad file descriptor"}),
    rowName<UnwritableRow>);

TEST(ProgramStart, WithoutAnOutputSaysSo) {
  BackgroundProgram program({"/bin/sh", "-c", "exec \"$0\" --text >&-", VORDA}, kNoDisplay);
  const auto status = program.wait();
  ASSERT_TRUE(status && WIFEXITED(*status));
  EXPECT_EQ(WEXITSTATUS(*status), 1);
  EXPECT_EQ(program.errorOutput(), "vorda: can't write the menu: Bad file descriptor\n");
}

TEST(ProgramStart, TheWatchedBarEndsOnAFullDisk) {
  BackgroundProgram program({"/bin/sh", "-c", "exec \"$0\" --bar --watch > /dev/full", VORDA},
                            kNoDisplay);
  const auto status = program.wait();
  ASSERT_TRUE(status && WIFEXITED(*status));
  EXPECT_EQ(WEXITSTATUS(*status), 1);
  EXPECT_EQ(program.errorOutput(), "vorda: can't write the line: No space left on device\n");
}

}  // namespace
