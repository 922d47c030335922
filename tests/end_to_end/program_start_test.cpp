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
  EXPECT_THAT(menu, ContainsRegex("\n★ x · 9.9 GB · pid 1 \\[A\\] +·   2[0-9][0-9] MB  ·  " + pid));
}

TEST(ProgramStart, NobodysNameIsALineWithoutAnEnd) {
  std::string name = "/opt/e";
  for (int i = 0; i < 30'000; ++i) name += "\u0301";
  const ChildProcess dear(playProcess({"--memory", "200"}, {name, "vllm", "serve"}));
  const std::string pid = "pid " + std::to_string(dear.pid());
  const std::string menu = BackgroundProgram({VORDA}, kNoDisplay).output();
  EXPECT_THAT(menu, ContainsRegex("\n★ e(\u0301){31} +·   2[0-9][0-9] MB  ·  " + pid));
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

TEST(ProgramStart, ABadOptionIsOneLineAndStatusTwo) {
  BackgroundProgram program({VORDA, "--colour"}, kNoDisplay);
  const auto status = program.wait();
  ASSERT_TRUE(status && WIFEXITED(*status));
  EXPECT_EQ(WEXITSTATUS(*status), 2);
  EXPECT_EQ(program.firstLine(), "");
  EXPECT_EQ(program.errorOutput(), "vorda: unknown option '--colour' (see vorda --help)\n");
}

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

struct FullDiskRow {
  const char* name;
  const char* option;
  const char* error;
};

class FullDisk : public testing::TestWithParam<FullDiskRow> {};

TEST_P(FullDisk, IsOneLineAndStatusOne) {
  BackgroundProgram program(
      {"/bin/sh", "-c", "exec \"$0\" $1 > /dev/full", VORDA, GetParam().option}, kNoDisplay);
  const auto status = program.wait();
  ASSERT_TRUE(status && WIFEXITED(*status));
  EXPECT_EQ(WEXITSTATUS(*status), 1);
  EXPECT_EQ(program.errorOutput(),
            "vorda: can't write " + std::string(GetParam().error) + ": No space left on device\n");
}

INSTANTIATE_TEST_SUITE_P(Table, FullDisk,
                         testing::Values(FullDiskRow{"Menu", "", "the menu"},
                                         FullDiskRow{"Text", "--text", "the menu"},
                                         FullDiskRow{"Json", "--json", "the JSON"},
                                         FullDiskRow{"Bar", "--bar", "the line"},
                                         FullDiskRow{"Help", "--help", "the help"},
                                         FullDiskRow{"Version", "--version", "the version"}),
                         rowName<FullDiskRow>);

}  // namespace
