#include "platform/macos/launchctl_list.h"

#include <gtest/gtest.h>

#include "fakes/row_name.h"

namespace {

struct Row {
  std::string name;
  std::string output;
  platform::LoadedLaunchAgents loaded;
};

class LaunchctlList : public testing::TestWithParam<Row> {};

TEST_P(LaunchctlList, YieldsLaunchAgents) {
  EXPECT_EQ(platform::parseLaunchctlList(GetParam().output), GetParam().loaded);
}

constexpr auto kNoPid = std::nullopt;
const std::string kHeader = "PID\tStatus\tLabel\n";

std::string manyLines() {
  std::string lines = kHeader;
  while (lines.size() < 1 << 20) lines += "-\t0\tcom.example.agent\n";
  return lines + "77\t0\tcom.example.last\n";
}

INSTANTIATE_TEST_SUITE_P(
    Table, LaunchctlList,
    testing::Values(
        Row{"Running", kHeader + "812\t0\tcom.ollama.serve\n", {{"com.ollama.serve", 812}}},
        Row{"DashForAPid", kHeader + "-\t0\tcom.example\n", {{"com.example", kNoPid}}},
        Row{"NegativeStatus", kHeader + "-\t-9\tcom.example\n", {{"com.example", kNoPid}}},
        Row{"TwoFields", kHeader + "12\tcom.example\n", {}},
        Row{"OneField", kHeader + "com.example\n", {}},
        Row{"FourFields", kHeader + "12\t0\tcom.example\textra\n", {{"com.example", 12}}},
        Row{"EmptyFields", kHeader + "\t\tcom.example\n", {{"com.example", kNoPid}}},
        Row{"EmptyLabel", kHeader + "5\t0\t\n", {{"", 5}}},
        Row{"RepeatedLabelTheLaterCounts",
            kHeader + "5\t0\tcom.a\n6\t0\tcom.b\n-\t0\tcom.a\n",
            {{"com.a", kNoPid}, {"com.b", 6}}},
        Row{"EmptyLinesBetween", "\n" + kHeader + "\n5\t0\tcom.a\n\n", {{"com.a", 5}}},
        Row{"NoLineFeedAtTheEnd", kHeader + "5\t0\tcom.a", {{"com.a", 5}}},
        Row{"HeaderAlone", kHeader, {}},
        Row{"HeaderIsWhateverComesFirst", "9\t0\tcom.first\n5\t0\tcom.a\n", {{"com.a", 5}}},
        Row{"Nothing", "", {}},
        Row{"PidWithASign",
            kHeader + "+5\t0\tcom.a\n-6\t0\tcom.b\n",
            {{"com.a", 5}, {"com.b", -6}}},
        Row{"PidWithTwoSigns", kHeader + "+-5\t0\tcom.a\n", {{"com.a", kNoPid}}},
        Row{"PidWithBlanks", kHeader + " 5\t0\tcom.a\n", {{"com.a", kNoPid}}},
        Row{"PidWithLetters", kHeader + "5x\t0\tcom.a\n", {{"com.a", kNoPid}}},
        Row{"PidBeyond32Bits", kHeader + "2147483648\t0\tcom.a\n", {{"com.a", kNoPid}}},
        Row{"LargestPid", kHeader + "2147483647\t0\tcom.a\n", {{"com.a", 2147483647}}},
        Row{"LabelsInUtf8", kHeader + "5\t0\tcom.café\n", {{"com.café", 5}}},
        Row{"NotUtf8", kHeader + "5\t0\tcom.a\n6\t0\tcaf\xe9\n", {}},
        Row{"OneMegabyte", manyLines(), {{"com.example.agent", kNoPid}, {"com.example.last", 77}}}),
    rowName<Row>);

}  // namespace
