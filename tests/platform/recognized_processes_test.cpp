// What a scan of the real machine tells of processes: those that the word rules, and
// what is listed, promise by example. The recognizer leaves them as they are.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <optional>
#include <ostream>

#include "fakes/row_name.h"
#include "platform/users.h"
#include "scanner/process_scanner.h"
#include "scanner/promised_examples.h"
#include "tools/child_process.h"

namespace {

/// The record of this process; none where it is not listed.
std::optional<VordaProcess> recordOf(const ChildProcess& process, double minMemMB = 0) {
  const auto processes = ProcessScanner::scan(minMemMB, {});
  const auto found = std::ranges::find(processes, process.pid(), &VordaProcess::pid);
  if (found == processes.end()) return std::nullopt;
  return *found;
}

class RealProcess : public testing::TestWithParam<PromisedExample> {};

TEST_P(RealProcess, HasThePromisedRoleAndName) {
  const PromisedExample& row = GetParam();
  const ChildProcess process(playProcess({}, row.arguments));
  const auto record = recordOf(process);
  ASSERT_TRUE(record);
  EXPECT_EQ(record->labRole, row.role);
  EXPECT_EQ(record->displayName, row.displayName);
  EXPECT_EQ(record->product, row.product);
  EXPECT_EQ(record->cpu, 0);
}

INSTANTIATE_TEST_SUITE_P(All, RealProcess, testing::ValuesIn(promisedExamples()),
                         rowName<PromisedExample>);

struct CommandLineRow {
  const char* name;
  std::vector<std::string> arguments;
  std::string commandLine;
};

std::ostream& operator<<(std::ostream& out, const CommandLineRow& row) {
  return out << row.name;
}

class RealCommandLine : public testing::TestWithParam<CommandLineRow> {};

TEST_P(RealCommandLine, HidesItsCredentials) {
  const ChildProcess process(playProcess({}, GetParam().arguments));
  const auto record = recordOf(process);
  ASSERT_TRUE(record);
  EXPECT_EQ(record->commandLine, GetParam().commandLine);
}

using C = CommandLineRow;
INSTANTIATE_TEST_SUITE_P(All, RealCommandLine,
                         testing::Values(C{"Token",
                                           {"python", "serve.py", "--token", "abc123"},
                                           "python serve.py --api-key •••"},
                                         C{"KeyAndToken",
                                           {"x", "--API_KEY", "sk-1", "--token", "t"},
                                           "x --api-key ••• --api-key •••"}),
                         rowName<CommandLineRow>);

TEST(RealProcesses, OfTheSystemAreNeverListed) {
  for (const char* const name : {"kernel_task", "launchd", "WindowServer"}) {
    const ChildProcess process(playProcess({"--memory", "64"}, {name, "vllm"}));
    EXPECT_FALSE(recordOf(process)) << name;
  }
}

TEST(RealProcesses, ThatAreOrdinaryAreListedFromASizeOn) {
  const ChildProcess process(playProcess({"--memory", "48"}, {"tool"}));
  EXPECT_FALSE(recordOf(process, 200));
  EXPECT_TRUE(recordOf(process, 40));
}

TEST(RealProcesses, OfOthersAreListedWhenTheyServeModels) {
  if (platform::ownUid() != 0) GTEST_SKIP() << "only root starts others' processes";
  const ChildProcess server(playProcess({"--user", "4711"}, {"vllm"}));
  const ChildProcess tool(playProcess({"--user", "4711"}, {"tool"}));
  const auto record = recordOf(server, 200);
  ASSERT_TRUE(record);
  EXPECT_EQ(record->labRole, LabRole::inference);
  EXPECT_TRUE(record->isProtected);
  EXPECT_EQ(record->ownerName, "uid 4711");
  EXPECT_FALSE(recordOf(tool));
}

TEST(RealProcesses, ThatTrainComeFirstAndTheLargerBeforeTheSmaller) {
  const ChildProcess small(playProcess({"--memory", "8"}, {"python", "train.py"}));
  const ChildProcess large(playProcess({"--memory", "40"}, {"python", "train.py"}));
  const ChildProcess server(playProcess({"--memory", "80"}, {"vllm"}));
  std::vector<pid_t> order;
  for (const auto& process : ProcessScanner::scan(0, {})) {
    for (const auto* const own : {&small, &large, &server}) {
      if (process.pid == own->pid()) order.push_back(process.pid);
    }
  }
  EXPECT_THAT(order, testing::ElementsAre(large.pid(), small.pid(), server.pid()));
}

}  // namespace
