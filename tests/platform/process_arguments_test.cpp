#include "platform/linux/process_arguments.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "fakes/row_name.h"
#include "tools/joined.h"

namespace {

using namespace std::string_literals;
using platform::ProcessFacts;
using Arguments = std::vector<std::string>;

struct BlockRow {
  const char* name;
  std::string block;
  const char* executable;
  const char* comm;
  Arguments arguments;
  const char* processName;
};

Arguments argumentsOf(const ProcessFacts& facts) {
  return {facts.arguments.begin(), facts.arguments.end()};
}

class ArgumentBlock : public testing::TestWithParam<BlockRow> {};

TEST_P(ArgumentBlock, GivesArgumentsAndName) {
  const auto& row = GetParam();
  ProcessFacts facts;
  platform::readArguments(row.block, {row.executable, row.comm}, facts);
  EXPECT_EQ(argumentsOf(facts), row.arguments);
  EXPECT_EQ(facts.commandLine, joined(row.arguments));
  EXPECT_EQ(facts.name, row.processName);
}

TEST_P(ArgumentBlock, NeedsItsOriginWhereverThatChangesTheOutcome) {
  const auto& row = GetParam();
  ProcessFacts facts;
  platform::readArguments(row.block, {}, facts);
  if (platform::needsOrigin(row.block, facts)) return;
  EXPECT_EQ(argumentsOf(facts), row.arguments);
  EXPECT_EQ(facts.name, row.processName);
}

const BlockRow kPlainRows[] = {
    {"SeveralArguments",
     "/usr/bin/python3\0-m\0vllm\0"s,
     "/usr/bin/python3.11",
     "python3",
     {"/usr/bin/python3", "-m", "vllm"},
     "python3"},
    {"OneArgument", "bash\0"s, "/usr/bin/bash", "bash", {"bash"}, "bash"},
    {"ALoginShell", "-bash\0"s, "/usr/bin/bash", "bash", {"-bash"}, "-bash"},
    {"NoFinalNul",
     "sleep\0"
     "100"s,
     "/usr/bin/sleep",
     "sleep",
     {"sleep", "100"},
     "sleep"},
    {"EmptyArgumentBetweenTwoOthers", "a\0\0b\0"s, "/a", "a", {"a", "b"}, "a"},
    {"EmptyFirstArgument", "\0b\0"s, "/a", "a", {"b"}, "b"},
    {"ArgumentsWithBlanksStayWhole",
     "sh\0-c\0echo hi there\0"s,
     "/bin/dash",
     "sh",
     {"sh", "-c", "echo hi there"},
     "sh"},
    {"SlashesAtTheEndOfTheName",
     "/opt/tool/\0x\0"s,
     "/opt/tool",
     "tool",
     {"/opt/tool/", "x"},
     "tool"},
    {"ArgumentThatIsNotUtf8", "tool\0caf\xe9\0end\0"s, "/tool", "tool", {"tool", "end"}, "tool"},
    {"FirstArgumentThatIsNotUtf8", "\xff\0end\0"s, "/tool", "tool", {"end"}, "end"},
    {"NoArgumentIsUtf8", "\xff\0\xfe\0"s, "/opt/tool", "tool", {}, "tool"},
    {"TextOfOtherScripts",
     "/opt/日本/ツール\0--é\0"s,
     "/opt/日本/ツール",
     "x",
     {"/opt/日本/ツール", "--é"},
     "ツール"},
    {"NoArguments", ""s, "/opt/tool", "comm", {}, "tool"},
    {"NulsOnly", "\0\0\0"s, "/opt/tool", "comm", {}, "tool"},
    {"NeitherArgumentsNorExecutable", ""s, "", "kworker/0:1", {}, ""},
    {"AnExecutableThatIsNotUtf8", ""s, "/opt/caf\xe9", "caf\xe9", {}, "caf\uFFFD"},
    {"ANameThatIsASlash", "/\0x\0"s, "/usr/bin/tool", "comm", {"/", "x"}, "tool"},
    {"ANameThatIsASlashWithoutAnExecutable", "/\0x\0"s, "", "comm", {"/", "x"}, "comm"},
    {"ANameThatIsASlashAndNothingElseIsKnown", "/\0x\0"s, "", "", {"/", "x"}, "/"},
    {"ANameThatEndsInAColon", "worker:\0x\0"s, "/usr/bin/tool", "comm", {"worker:", "x"}, "tool"},
};

INSTANTIATE_TEST_SUITE_P(Plain, ArgumentBlock, testing::ValuesIn(kPlainRows), rowName<BlockRow>);

const BlockRow kTitleRows[] = {
    {"BrowserHelper",
     "/opt/google/chrome/chrome --type=renderer --crashpad-handler-pid=7 --lang=en/US\0"s,
     "/opt/google/chrome/chrome",
     "chrome",
     {"/opt/google/chrome/chrome", "--type=renderer", "--crashpad-handler-pid=7", "--lang=en/US"},
     "chrome"},
    {"BrowserHelperOfAnotherUser",
     "/opt/google/chrome/chrome --type=gpu-process --x=/a/b\0"s,
     "",
     "chrome",
     {"/opt/google/chrome/chrome", "--type=gpu-process", "--x=/a/b"},
     "chrome"},
    {"Electron",
     "/usr/share/code/code --type=zygote --no-sandbox /tmp/x\0"s,
     "/usr/share/code/code",
     "code",
     {"/usr/share/code/code", "--type=zygote", "--no-sandbox", "/tmp/x"},
     "code"},
    {"NginxMaster",
     "nginx: master process /usr/sbin/nginx -g daemon off;\0"s,
     "/usr/sbin/nginx",
     "nginx",
     {"nginx:", "master", "process", "/usr/sbin/nginx", "-g", "daemon", "off;"},
     "nginx"},
    {"NginxWorker",
     "nginx: worker process\0\0\0\0"s,
     "/usr/sbin/nginx",
     "nginx",
     {"nginx: worker process"},
     "nginx: worker process"},
    {"Postgres",
     "postgres: ada shop [local] idle\0"s,
     "/usr/lib/postgresql/15/bin/postgres",
     "postgres",
     {"postgres: ada shop [local] idle"},
     "postgres: ada shop [local] idle"},
    {"SshdOfRoot", "sshd: ada@pts/0\0"s, "", "sshd", {"sshd:", "ada@pts/0"}, "sshd"},
    {"SshdListener",
     "sshd: /usr/sbin/sshd -D [listener] 0 of 10-100 startups\0"s,
     "/usr/sbin/sshd",
     "sshd",
     {"sshd:", "/usr/sbin/sshd", "-D", "[listener]", "0", "of", "10-100", "startups"},
     "sshd"},
    {"SshdSessionWhoseCommIsCut",
     "a-very-long-daemon-name: ada\0"s,
     "",
     "a-very-long-dae",
     {"a-very-long-daemon-name:", "ada"},
     "a-very-long-dae"},
    {"Gunicorn",
     "gunicorn: master [shop.wsgi]\0"s,
     "/usr/bin/python3.11",
     "gunicorn",
     {"gunicorn: master [shop.wsgi]"},
     "gunicorn: master [shop.wsgi]"},
    {"VllmWorker",
     "VLLM::Worker_TP0\0\0\0\0\0\0"s,
     "/usr/bin/python3.11",
     "VLLM::Worker_TP",
     {"VLLM::Worker_TP0"},
     "VLLM::Worker_TP0"},
    {"AnExecutablePathWithBlanks",
     "/opt/My App/My App\0"s,
     "/opt/My App/My App",
     "My App",
     {"/opt/My App/My App"},
     "My App"},
    {"AnExecutablePathWithBlanksAndOptions",
     "/opt/My App/My App --type=renderer -x\0"s,
     "/opt/My App/My App",
     "My App",
     {"/opt/My App/My App", "--type=renderer", "-x"},
     "My App"},
    {"AnotherPathWithBlanks", "./My App\0"s, "/opt/My App", "My App", {"./My App"}, "My App"},
    {"ALongerPathThatBeginsLikeTheExecutable",
     "/opt/tool2 x\0"s,
     "/opt/tool",
     "tool",
     {"/opt/tool2 x"},
     "tool2 x"},
    {"OneArgumentOfSeveralWords",
     "my own label\0"s,
     "/usr/bin/sleep",
     "sleep",
     {"my own label"},
     "my own label"},
    {"SeveralStringsAreNoTitle",
     "tool -x\0-y\0"s,
     "/bin/tool",
     "tool",
     {"tool -x", "-y"},
     "tool -x"},
    {"PaddedWithNuls",
     "tool --worker\0\0\0\0\0\0\0\0"s,
     "/bin/tool",
     "tool",
     {"tool", "--worker"},
     "tool"},
    {"PaddedWithBlanks",
     "tool --worker         \0"s,
     "/bin/tool",
     "tool",
     {"tool", "--worker"},
     "tool"},
    {"ASingleWordPaddedWithBlanks",
     "worker         \0"s,
     "/bin/tool",
     "tool",
     {"worker"},
     "worker"},
    {"BlanksOnly", "        \0"s, "/bin/tool", "tool", {}, "tool"},
    {"RunsOfBlanksBetweenTheWords",
     "tool  a   b\0"s,
     "/bin/tool",
     "tool",
     {"tool", "a", "b"},
     "tool"},
    {"LongerThanTheBlock",
     "tool: a title that ran on into the environment"s,
     "/bin/tool",
     "tool",
     {"tool: a title that ran on into the environment"},
     "tool: a title that ran on into the environment"},
    {"AWordThatIsNotUtf8", "tool caf\xe9 end\0"s, "/bin/tool", "tool", {"tool", "end"}, "tool"},
    {"ABlankAtTheStart", " tool a\0"s, "/bin/tool", "tool", {" tool a"}, " tool a"},
    {"AColonAlone", ": a\0"s, "/bin/tool", "tool", {": a"}, ": a"},
    {"NothingKnownOfTheProgram", "tool a\0"s, "", "", {"tool a"}, "tool a"},
};

INSTANTIATE_TEST_SUITE_P(Titles, ArgumentBlock, testing::ValuesIn(kTitleRows), rowName<BlockRow>);

TEST(ArgumentBlockReading, ForgetsTheProcessBefore) {
  ProcessFacts facts;
  platform::readArguments("a\0b\0c\0"s, {"/bin/a", "a"}, facts);
  platform::readArguments("d\0"s, {"/bin/d", "d"}, facts);
  EXPECT_EQ(argumentsOf(facts), Arguments{"d"});
  EXPECT_EQ(facts.commandLine, "d");
  EXPECT_EQ(facts.name, "d");
}

TEST(ArgumentBlockReading, HoldsItsViewsThroughALongList) {
  std::string block;
  for (int i = 0; i < 10000; ++i) block += std::to_string(i) + '\0';
  ProcessFacts facts;
  platform::readArguments(block, {}, facts);
  ASSERT_EQ(facts.arguments.size(), 10000U);
  EXPECT_EQ(facts.arguments[9999], "9999");
  EXPECT_EQ(facts.arguments.front().data(), facts.commandLine.data());
  EXPECT_EQ(facts.commandLine.size(), block.size() - 1);
  EXPECT_FALSE(facts.isCut);
}

struct LongRow {
  const char* name;
  std::string block;
  std::string lastArgument;
  std::size_t length;  ///< of the command line
  bool isCut;
};

class LongArgumentBlock : public testing::TestWithParam<LongRow> {};

TEST_P(LongArgumentBlock, IsCutAtTheEndOfAnArgument) {
  const auto& row = GetParam();
  ProcessFacts facts;
  platform::readArguments(row.block, {"/bin/tool", "tool"}, facts);
  ASSERT_FALSE(facts.arguments.empty());
  EXPECT_EQ(facts.arguments.back(), row.lastArgument);
  EXPECT_EQ(facts.commandLine.size(), row.length);
  EXPECT_EQ(facts.isCut, row.isCut);
}

constexpr std::size_t kMost = platform::kLongestCommandLine;

std::string times(std::size_t count, const std::string& text) {
  std::string result;
  while (count-- > 0) result += text;
  return result;
}

const LongRow kLongRows[] = {
    {"OfExactlyTheMost", "a\0"s + times(kMost - 3, "b") + '\0', times(kMost - 3, "b"), kMost - 1,
     false},
    {"OfOneMore", "a\0b\0"s + times(kMost - 3, "c") + '\0', "b", 3, true},
    {"OfManySmallOnes", times(kMost, "ab\0"s), "ab", kMost - 2, true},
    {"OneThatIsTooLongAlone", times(kMost + 1, "x"), times(kMost, "x"), kMost, true},
    {"OneThatIsTooLongAloneInsideALetter", "x" + times(kMost, "é"), "x" + times(kMost / 2 - 1, "é"),
     kMost - 1, true},
    {"ATitleWithPadding", "tool: at work\0"s + std::string(2 * kMost, '\0'), "tool: at work", 13,
     false},
    {"ATitleThatIsTooLong", "tool " + times(kMost, "a "), "a", kMost, true},
};

INSTANTIATE_TEST_SUITE_P(Table, LongArgumentBlock, testing::ValuesIn(kLongRows), rowName<LongRow>);

TEST(ArgumentBlockReading, NeedsNoOriginForAnOrdinaryCommand) {
  ProcessFacts facts;
  const std::string block = "/usr/bin/python3\0-c\0print(1) # a b\0"s;
  platform::readArguments(block, {}, facts);
  EXPECT_FALSE(platform::needsOrigin(block, facts));
}

}  // namespace
