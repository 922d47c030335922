#include "launch_agents/launch_agent_operation.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "fakes/row_name.h"
#include "fakes/scripted_platform.h"

namespace {

using Answer = LaunchAgentOperation::Outcome;
using Replies = std::vector<platform::ServiceReply>;

const VordaLaunchAgent kLaunchAgent{.label = "hermes", .plistPath = "/units/hermes.service"};

struct LaunchAgentOperationRow {
  const char* name;
  Replies replies;
  Answer answer;
  int attempts;  ///< how many are made
};

std::vector<std::string> calls(const std::string& verb, int count) {
  std::vector<std::string> result;
  for (int i = 1; i <= count; ++i) result.push_back(verb + " hermes " + std::to_string(i));
  return result;
}

class Stopping : public testing::TestWithParam<LaunchAgentOperationRow> {};

TEST_P(Stopping, TriesInOrderUntilItIsUnloaded) {
  resetMachine();
  machine().stopReplies = GetParam().replies;
  EXPECT_EQ(LaunchAgentOperation(kLaunchAgent, LaunchAgentOperation::Kind::stop).poll(),
            GetParam().answer);
  EXPECT_EQ(machine().serviceCalls, calls("stop", GetParam().attempts));
}

const Answer kUnloaded{true, "Unloaded hermes"};
const Answer kAlreadyUnloaded{true, "hermes already unloaded"};
const Answer kNotUnloaded{false, "Failed to unload hermes"};

INSTANTIATE_TEST_SUITE_P(
    Table, Stopping,
    testing::Values(
        LaunchAgentOperationRow{"FirstSucceeds", {{0, ""}, {0, ""}, {0, ""}}, kUnloaded, 1},
        LaunchAgentOperationRow{"SuccessBeforeWords", {{0, "No such process"}}, kUnloaded, 1},
        LaunchAgentOperationRow{
            "NoSuchProcess", {{3, "Boot-out failed: 3: No such process\n"}}, kAlreadyUnloaded, 1},
        LaunchAgentOperationRow{
            "CouldNotFind", {{113, "Could not find service"}, {0, ""}}, kAlreadyUnloaded, 1},
        LaunchAgentOperationRow{"WordsInAnotherCaseDoNotCount",
                                {{3, "no such process"}, {3, "could not find"}},
                                kNotUnloaded,
                                2},
        LaunchAgentOperationRow{
            "SecondSucceeds", {{5, "Input/output error"}, {0, ""}, {0, ""}}, kUnloaded, 2},
        LaunchAgentOperationRow{
            "SecondFindsItNotLoaded", {{5, "x"}, {3, "Could not find it"}}, kAlreadyUnloaded, 2},
        LaunchAgentOperationRow{"ThirdSucceeds", {{5, ""}, {5, ""}, {0, ""}}, kUnloaded, 3},
        LaunchAgentOperationRow{"AllFail", {{5, "a"}, {5, "b"}, {5, "c"}}, kNotUnloaded, 3},
        LaunchAgentOperationRow{"ToolCannotBeStarted",
                                {{-1, "launch path not accessible"}, {-1, ""}, {-1, ""}},
                                kNotUnloaded,
                                3},
        LaunchAgentOperationRow{"NoWayToTry", {}, kNotUnloaded, 0}),
    rowName<LaunchAgentOperationRow>);

class Starting : public testing::TestWithParam<LaunchAgentOperationRow> {};

TEST_P(Starting, TriesInOrderUntilItIsLoaded) {
  resetMachine();
  machine().startReplies = GetParam().replies;
  EXPECT_EQ(LaunchAgentOperation(kLaunchAgent, LaunchAgentOperation::Kind::start).poll(),
            GetParam().answer);
  EXPECT_EQ(machine().serviceCalls, calls("start", GetParam().attempts));
}

const Answer kLoaded{true, "Loaded hermes"};
const Answer kNotLoaded{false, "Failed to load hermes"};

INSTANTIATE_TEST_SUITE_P(
    Table, Starting,
    testing::Values(
        LaunchAgentOperationRow{"FirstSucceeds", {{0, ""}, {0, ""}}, kLoaded, 1},
        LaunchAgentOperationRow{"SecondSucceeds", {{5, ""}, {0, ""}}, kLoaded, 2},
        LaunchAgentOperationRow{"AlreadyLoaded",
                                {{37, "service already loaded"}, {1, "service already loaded"}},
                                kNotLoaded,
                                2},
        LaunchAgentOperationRow{
            "WordsAreNotRead", {{3, "No such process"}, {3, "Could not find"}}, kNotLoaded, 2},
        LaunchAgentOperationRow{"ToolCannotBeStarted", {{-1, "x"}, {-1, "x"}}, kNotLoaded, 2},
        LaunchAgentOperationRow{"NoWayToTry", {}, kNotLoaded, 0}),
    rowName<LaunchAgentOperationRow>);

TEST(LaunchAgentOperations, GoOnUntilTheirAttemptEnds) {
  resetMachine();
  machine().stopReplies = {{5, "x"}, {0, ""}};
  machine().attemptsGoOn = true;
  LaunchAgentOperation operation(kLaunchAgent, LaunchAgentOperation::Kind::stop);
  EXPECT_THAT(machine().serviceCalls, testing::IsEmpty()) << "the first look begins it";
  for (int i = 0; i < 3; ++i) EXPECT_EQ(operation.poll(), std::nullopt);
  EXPECT_EQ(operation.outcome(), std::nullopt);
  EXPECT_EQ(machine().serviceCalls, calls("stop", 1)) << "the next is not tried meanwhile";
  machine().attemptsGoOn = false;
  EXPECT_EQ(operation.poll(), kUnloaded);
  EXPECT_EQ(machine().serviceCalls, calls("stop", 2));
  EXPECT_EQ(operation.outcome(), kUnloaded);
  EXPECT_EQ(operation.poll(), kUnloaded);
  EXPECT_EQ(machine().serviceCalls, calls("stop", 2));
}

TEST(LaunchAgentOperations, SayWhatTheyAreAbout) {
  resetMachine();
  const LaunchAgentOperation operation(kLaunchAgent, LaunchAgentOperation::Kind::start);
  EXPECT_EQ(operation.label(), "hermes");
  EXPECT_EQ(operation.kind(), LaunchAgentOperation::Kind::start);
}

}  // namespace
