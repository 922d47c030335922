#include "platform/macos/launchctl_list.h"

#include <gtest/gtest.h>

#include "fakes/row_name.h"

namespace {

struct LaunchctlListRow {
  std::string name;
  std::string output;
  platform::LoadedLaunchAgents loaded;
};

class LaunchctlList : public testing::TestWithParam<LaunchctlListRow> {};

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
        LaunchctlListRow{
            "Running", kHeader + "812\t0\tcom.ollama.serve\n", {{"com.ollama.serve", 812}}},
        LaunchctlListRow{"DashForAPid", kHeader + "-\t0\tcom.example\n", {{"com.example", kNoPid}}},
        LaunchctlListRow{
            "NegativeStatus", kHeader + "-\t-9\tcom.example\n", {{"com.example", kNoPid}}},
        LaunchctlListRow{"TwoFields", kHeader + "12\tcom.example\n", {}},
        LaunchctlListRow{"OneField", kHeader + "com.example\n", {}},
        LaunchctlListRow{
            "FourFields", kHeader + "12\t0\tcom.example\textra\n", {{"com.example", 12}}},
        LaunchctlListRow{"EmptyFields", kHeader + "\t\tcom.example\n", {{"com.example", kNoPid}}},
        LaunchctlListRow{"EmptyLabel", kHeader + "5\t0\t\n", {{"", 5}}},
        LaunchctlListRow{"RepeatedLabelTheLaterCounts",
                         kHeader + "5\t0\tcom.a\n6\t0\tcom.b\n-\t0\tcom.a\n",
                         {{"com.a", kNoPid}, {"com.b", 6}}},
        LaunchctlListRow{"EmptyLinesBetween", "\n" + kHeader + "\n5\t0\tcom.a\n\n", {{"com.a", 5}}},
        LaunchctlListRow{"NoLineFeedAtTheEnd", kHeader + "5\t0\tcom.a", {{"com.a", 5}}},
        LaunchctlListRow{"HeaderAlone", kHeader, {}},
        LaunchctlListRow{
            "HeaderIsWhateverComesFirst", "9\t0\tcom.first\n5\t0\tcom.a\n", {{"com.a", 5}}},
        LaunchctlListRow{"Nothing", "", {}},
        LaunchctlListRow{"PidWithASign",
                         kHeader + "+5\t0\tcom.a\n-6\t0\tcom.b\n",
                         {{"com.a", 5}, {"com.b", -6}}},
        LaunchctlListRow{"PidWithTwoSigns", kHeader + "+-5\t0\tcom.a\n", {{"com.a", kNoPid}}},
        LaunchctlListRow{"PidWithBlanks", kHeader + " 5\t0\tcom.a\n", {{"com.a", kNoPid}}},
        LaunchctlListRow{"PidWithLetters", kHeader + "5x\t0\tcom.a\n", {{"com.a", kNoPid}}},
        LaunchctlListRow{
            "PidBeyond32Bits", kHeader + "2147483648\t0\tcom.a\n", {{"com.a", kNoPid}}},
        LaunchctlListRow{"LargestPid", kHeader + "2147483647\t0\tcom.a\n", {{"com.a", 2147483647}}},
        LaunchctlListRow{"LabelsInUtf8", kHeader + "5\t0\tcom.café\n", {{"com.café", 5}}},
        LaunchctlListRow{"NotUtf8", kHeader + "5\t0\tcom.a\n6\t0\tcaf\xe9\n", {}},
        LaunchctlListRow{
            "OneMegabyte", manyLines(), {{"com.example.agent", kNoPid}, {"com.example.last", 77}}}),
    rowName<LaunchctlListRow>);

}  // namespace
