#include "platform/macos/argument_block.h"

#include <gtest/gtest.h>

#include <limits>

#include "fakes/row_name.h"
#include "macos/argument_block_bytes.h"

namespace {

using darwin::argumentBlock;
using darwin::rawArgumentBlock;
using namespace std::string_literals;
using Texts = std::vector<std::string>;

struct ArgumentBlockRow {
  std::string name;
  std::string block;
  Texts arguments;
};

class ArgumentBlock : public testing::TestWithParam<ArgumentBlockRow> {};

TEST_P(ArgumentBlock, YieldsArguments) {
  platform::ProcessFacts facts;
  platform::readArgumentBlock(GetParam().block, facts);
  EXPECT_EQ(Texts(facts.arguments.begin(), facts.arguments.end()), GetParam().arguments);
}

const Texts kOllama{"/opt/homebrew/bin/ollama", "serve"};
const Texts kEnvironment{"HOME=/Users/ada", "TOKEN=secret"};
constexpr std::int32_t kMost = std::numeric_limits<std::int32_t>::max();

INSTANTIATE_TEST_SUITE_P(
    Table, ArgumentBlock,
    testing::Values(
        ArgumentBlockRow{"Plain", argumentBlock("/opt/homebrew/bin/ollama", kOllama, kEnvironment),
                         kOllama},
        ArgumentBlockRow{
            "PathWithoutPadding", rawArgumentBlock(2, "/bin/ls\0ls\0-l\0A=1\0"s), {"ls", "-l"}},
        ArgumentBlockRow{
            "ArgumentsThatAreNotThePath", argumentBlock("/bin/sh", {"-zsh"}), {"-zsh"}},
        ArgumentBlockRow{"NoArguments", argumentBlock("/sbin/launchd", {}, kEnvironment), {}},
        ArgumentBlockRow{"NegativeCount", rawArgumentBlock(-1, "/bin/ls\0ls\0"s), {}},
        // The step that the empty one would have taken goes to the environment.
        ArgumentBlockRow{"EmptyArgumentBetweenTwo",
                         argumentBlock("/bin/sh", {"sh", "", "x"}, kEnvironment),
                         {"sh", "x", "HOME=/Users/ada"}},
        ArgumentBlockRow{"EmptyArgumentBetweenTwoWithoutEnvironment",
                         argumentBlock("/bin/sh", {"sh", "", "x"}),
                         {"sh", "x"}},
        ArgumentBlockRow{"TwoEmptyArguments",
                         argumentBlock("/bin/sh", {"sh", "", ""}, kEnvironment),
                         {"sh", "HOME=/Users/ada", "TOKEN=secret"}},
        ArgumentBlockRow{"NoEmptyArgumentLeavesTheEnvironmentAlone",
                         argumentBlock("/bin/sh", {"sh", "x"}, kEnvironment),
                         {"sh", "x"}},
        // It is dropped, and was a step all the same.
        ArgumentBlockRow{"ArgumentThatIsNotUtf8",
                         argumentBlock("/bin/sh", {"sh", "caf\xe9", "x"}, kEnvironment),
                         {"sh", "x"}},
        ArgumentBlockRow{"Utf8", argumentBlock("/bin/é", {"é", "日本"}), {"é", "日本"}},
        ArgumentBlockRow{
            "CutInAnArgument", rawArgumentBlock(3, "/bin/ls\0ls\0--colo"s), {"ls", "--colo"}},
        ArgumentBlockRow{"CutInACharacter", rawArgumentBlock(2, "/bin/ls\0ls\0caf\xc3"s), {"ls"}},
        ArgumentBlockRow{"CutInThePath", rawArgumentBlock(2, "/bin/l"), {}},
        ArgumentBlockRow{"CutAfterThePath", rawArgumentBlock(2, "/bin/ls\0"s), {}},
        ArgumentBlockRow{"CountAlone", rawArgumentBlock(2, ""), {}},
        ArgumentBlockRow{"ThreeBytes", "\2\0\0"s, {}}, ArgumentBlockRow{"Nothing", "", {}},
        ArgumentBlockRow{"NulsAlone", rawArgumentBlock(2, std::string(64, '\0')), {}},
        ArgumentBlockRow{
            "LargestCount", rawArgumentBlock(kMost, "/bin/ls\0ls\0-l\0"s), {"ls", "-l"}},
        ArgumentBlockRow{
            "SmallestCount",
            rawArgumentBlock(std::numeric_limits<std::int32_t>::min(), "/bin/ls\0ls\0"s),
            {}}),
    rowName<ArgumentBlockRow>);

TEST(ArgumentBlock, JoinsArgumentsBySingleBlanks) {
  platform::ProcessFacts facts;
  platform::readArgumentBlock(argumentBlock("/bin/sh", {"sh", "a b", "", "c"}), facts);
  EXPECT_EQ(facts.commandLine, "sh a b c");
}

TEST(ArgumentBlock, LeavesNothingOfTheBlockBefore) {
  platform::ProcessFacts facts;
  platform::readArgumentBlock(argumentBlock("/bin/sh", {"sh", "-c", "true"}), facts);
  platform::readArgumentBlock("", facts);
  EXPECT_EQ(facts.commandLine, "");
  EXPECT_TRUE(facts.arguments.empty());
}

TEST(ArgumentBlock, ReadsTheArgumentsThatFitWhole) {
  Texts arguments(3, std::string(20'000, 'x'));
  platform::ProcessFacts facts;
  platform::readArgumentBlock(argumentBlock("/bin/sh", arguments), facts);
  EXPECT_EQ(Texts(facts.arguments.begin(), facts.arguments.end()), arguments);
  EXPECT_FALSE(facts.isCut);

  arguments.emplace_back(platform::kLongestCommandLine, 'y');
  arguments.emplace_back("z");
  platform::readArgumentBlock(argumentBlock("/bin/sh", arguments), facts);
  EXPECT_EQ(Texts(facts.arguments.begin(), facts.arguments.end()),
            Texts(arguments.begin(), arguments.begin() + 3));
  EXPECT_TRUE(facts.isCut);
}

}  // namespace
