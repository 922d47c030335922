#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <tuple>

#include "fakes/scripted_platform.h"
#include "scanner/process_scanner.h"

namespace {

using ProcessScanner::scan;
using testing::ElementsAre;
using testing::IsEmpty;

class ProcessScan : public testing::Test {
 protected:
  ProcessScan() { resetMachine(); }

  static std::vector<std::int32_t> pids(double minMemMB) {
    std::vector<std::int32_t> result;
    for (const auto& process : scan(minMemMB)) result.push_back(process.pid);
    return result;
  }

  /// The scan of a machine that has one process to be listed.
  static VordaProcess onlyProcess(double minMemMB = 0) {
    const auto processes = scan(minMemMB);
    EXPECT_EQ(processes.size(), 1U);
    return processes.size() == 1 ? processes.front() : VordaProcess{};
  }
};

TEST_F(ProcessScan, OfAnEmptyMachineIsEmpty) {
  EXPECT_THAT(scan(0), IsEmpty());
}

TEST_F(ProcessScan, FillsEveryField) {
  machine().processes = {{.pid = 7,
                          .arguments = {"/usr/bin/vllm", "serve", "--model", "a", "--key", "k"},
                          .effectiveUid = 1001,
                          .footprintMB = 2048.25}};
  machine().launchAgentFiles = {{.label = "vllm"}};
  machine().loadedLaunchAgents = {{"vllm", 7}};
  EXPECT_THAT(scan(200), ElementsAre(VordaProcess{
                             .pid = 7,
                             .displayName = "vLLM: a",
                             .product = "vLLM",
                             .memMB = 2048.25,
                             .cpu = 0,
                             .commandLine = "/usr/bin/vllm serve --model a --api-key •••",
                             .labRole = LabRole::inference,
                             .matchedAgents = {"vllm"},
                             .isProtected = true,
                             .ownerName = "grace",
                         }));
}

TEST_F(ProcessScan, TellsWhichProcessEachRowSpeaksOf) {
  machine().processes = {{.pid = 7, .arguments = {"vllm"}, .identity = 70},
                         {.pid = 8, .arguments = {"vllm"}, .identity = std::nullopt}};
  const auto processes = scan(0);
  ASSERT_EQ(processes.size(), 2U) << "one without an identity stays listed";
  EXPECT_EQ(processes[0].identity, 70U);
  EXPECT_EQ(processes[1].identity, std::nullopt);
}

TEST_F(ProcessScan, LeavesOutAProcessThatChangesWhileItIsRead) {
  machine().processes = {{.pid = 7, .arguments = {"vllm"}, .identity = 70},
                         {.pid = 8, .arguments = {"vllm"}, .identity = 80},
                         {.pid = 9, .arguments = {"vllm"}, .identity = 90}};
  machine().beforeConfirm = [](std::int32_t pid) {
    if (pid == 7) machine().find(7)->identity = 71;  // the pid is another's now
    if (pid == 8) machine().find(8)->pid = 80;       // gone
  };
  EXPECT_THAT(pids(0), ElementsAre(9));
}

TEST_F(ProcessScan, CountsWhatRunsBelowAProcess) {
  machine().ownPid = 6;
  machine().processes = {{.pid = 2, .arguments = {"tmux"}},
                         {.pid = 3, .arguments = {"bash"}, .footprintMB = 1, .parent = 2},
                         {.pid = 4, .arguments = {"python3", "train.py"}, .parent = 3},
                         {.pid = 5, .arguments = {"zombie"}, .unreadable = true},
                         {.pid = 6, .arguments = {"vorda"}, .parent = 3}};
  const auto processes = scan(50);
  ASSERT_EQ(processes.size(), 2U);
  EXPECT_EQ(processes[0].pid, 4);
  EXPECT_EQ(processes[0].processesBelow, 0U);
  EXPECT_EQ(processes[1].pid, 2);
  EXPECT_EQ(processes[1].processesBelow, 3U) << "this program is one of them";
}

TEST_F(ProcessScan, KeepsTheFirst8KiBOfACommandLine) {
  machine().processes = {{.pid = 1, .arguments = {"vllm", std::string(8187, 'x')}},
                         {.pid = 2, .arguments = {"vllm", std::string(8188, 'x')}},
                         {.pid = 3, .arguments = {"vllm", "serve"}, .isCut = true}};
  const auto processes = scan(0);
  ASSERT_EQ(processes.size(), 3U);
  EXPECT_EQ(processes[0].commandLine.size(), 8192U);
  EXPECT_FALSE(processes[0].isCommandLineCut);
  EXPECT_EQ(processes[1].commandLine, processes[0].commandLine);
  EXPECT_TRUE(processes[1].isCommandLineCut);
  EXPECT_TRUE(processes[2].isCommandLineCut);
}

TEST_F(ProcessScan, KeepsAnothersWorkloadWhateverItsSize) {
  machine().processes = {{.pid = 7, .arguments = {"vllm"}, .effectiveUid = 0, .footprintMB = 50}};
  const auto processes = scan(200);
  ASSERT_EQ(processes.size(), 1U);
  EXPECT_EQ(processes[0].labRole, LabRole::inference);
  EXPECT_TRUE(processes[0].isProtected);
  EXPECT_EQ(processes[0].ownerName, "root");
}

TEST_F(ProcessScan, KeepsTheUsersOwnOrdinaryProcessesFromTheThresholdOn) {
  machine().processes = {{.pid = 1, .arguments = {"a"}, .footprintMB = 150},
                         {.pid = 2, .arguments = {"b"}, .footprintMB = 199.999},
                         {.pid = 3, .arguments = {"c"}, .footprintMB = 200.0}};
  EXPECT_THAT(pids(200), ElementsAre(3));
  EXPECT_FALSE(onlyProcess(200).isProtected);
}

TEST_F(ProcessScan, LeavesOutOthersOrdinaryProcesses) {
  machine().processes = {{.pid = 1, .arguments = {"a"}, .effectiveUid = 0, .footprintMB = 9000},
                         {.pid = 2, .arguments = {"b"}, .effectiveUid = 1001}};
  EXPECT_THAT(pids(0), IsEmpty());
}

TEST_F(ProcessScan, LeavesOutWhatRunsTheSession) {
  machine().processes = {{.pid = 1, .arguments = {"/sbin/launchd"}},
                         {.pid = 2, .arguments = {"WindowServer", "vllm"}, .footprintMB = 9000},
                         {.pid = 3, .name = "kernel_task"},
                         {.pid = 4, .arguments = {"windowserver"}},
                         {.pid = 5, .arguments = {"launchd2"}}};
  EXPECT_THAT(pids(0), ElementsAre(4, 5));
}

TEST_F(ProcessScan, LeavesOutItselfAndWhatIsNoProcess) {
  machine().ownPid = 3;
  machine().processes = {{.pid = 0, .arguments = {"vllm"}},
                         {.pid = -1, .arguments = {"vllm"}},
                         {.pid = 3, .arguments = {"vllm"}},
                         {.pid = 4, .arguments = {"vllm"}}};
  EXPECT_THAT(pids(0), ElementsAre(4));
}

TEST_F(ProcessScan, LeavesOutWhatCannotBeRead) {
  machine().processes = {{.pid = 1, .arguments = {"vllm"}, .unreadable = true},
                         {.pid = 2},
                         {.pid = 3, .arguments = {"vllm"}}};
  EXPECT_THAT(pids(0), ElementsAre(3));
}

TEST_F(ProcessScan, CountsUnreadableMemoryAsNone) {
  machine().processes = {{.pid = 1, .arguments = {"vllm"}, .footprintMB = std::nullopt},
                         {.pid = 2, .arguments = {"a"}, .footprintMB = std::nullopt}};
  EXPECT_THAT(pids(0.1), ElementsAre(1));
  EXPECT_EQ(onlyProcess(0.1).memMB, 0);
  EXPECT_THAT(pids(0), ElementsAre(1, 2));
}

TEST_F(ProcessScan, CountsAnUnknownOwnerAsTheSuperuser) {
  machine().processes = {{.pid = 1, .arguments = {"vllm"}, .effectiveUid = std::nullopt},
                         {.pid = 2, .arguments = {"a"}, .effectiveUid = std::nullopt}};
  const auto processes = scan(0);
  ASSERT_EQ(processes.size(), 1U);
  EXPECT_TRUE(processes[0].isProtected);
  EXPECT_EQ(processes[0].ownerName, "root");

  machine().ownUid = 0;
  EXPECT_EQ(scan(0).size(), 2U);
}

TEST_F(ProcessScan, NamesAnOwnerWithoutLoginByNumber) {
  machine().processes = {{.pid = 1, .arguments = {"vllm"}, .effectiveUid = 501}};
  EXPECT_EQ(onlyProcess().ownerName, "uid 501");
}

TEST_F(ProcessScan, PutsTrainingFirstAndTheLargerFirst) {
  machine().processes = {{.pid = 1, .arguments = {"ordinary"}, .footprintMB = 20000},
                         {.pid = 2, .arguments = {"jupyter"}, .footprintMB = 15000},
                         {.pid = 3, .arguments = {"python", "train.py"}, .footprintMB = 900},
                         {.pid = 4, .arguments = {"vllm"}, .footprintMB = 10000},
                         {.pid = 5, .arguments = {"python", "sft.py"}, .footprintMB = 4000},
                         {.pid = 6, .arguments = {"ordinary"}, .footprintMB = 20001}};
  EXPECT_THAT(pids(0), ElementsAre(5, 3, 4, 2, 6, 1));
}

TEST_F(ProcessScan, KeepsTheSystemsOrderAmongEquals) {
  std::vector<std::int32_t> expected;
  for (std::int32_t pid = 900; pid > 500; --pid) {
    machine().processes.push_back({.pid = pid, .arguments = {"vllm"}, .footprintMB = 10});
    expected.push_back(pid);
  }
  EXPECT_EQ(pids(0), expected);
}

TEST_F(ProcessScan, SortsHundredsOfProcesses) {
  constexpr int kCount = 600;
  for (int i = 0; i < kCount; ++i) {
    const std::vector<std::vector<std::string>> commands{
        {"ordinary"}, {"vllm"}, {"jupyter"}, {"python", "train.py"}};
    machine().processes.push_back({.pid = i + 1,
                                   .arguments = commands[static_cast<std::size_t>(i % 4)],
                                   .effectiveUid = i % 3 == 0 ? 0U : 1000U,
                                   .footprintMB = i * 7 % 100});
  }
  const auto processes = scan(0);
  EXPECT_EQ(processes.size(), 550U);  // a third of the ordinary ones belong to another
  const std::vector<LabRole> order{LabRole::training, LabRole::inference, LabRole::agent,
                                   LabRole::none};
  const auto key = [&order](const VordaProcess& process) {
    const auto rank = std::find(order.begin(), order.end(), process.labRole) - order.begin();
    return std::tuple(rank, -process.memMB, process.pid);
  };
  EXPECT_TRUE(std::is_sorted(processes.begin(), processes.end(),
                             [&key](const auto& a, const auto& b) { return key(a) < key(b); }));
}

TEST_F(ProcessScan, MatchesLaunchAgentsInTheirOrder) {
  machine().processes = {{.pid = 7, .arguments = {"vllm"}}, {.pid = 8, .arguments = {"jupyter"}}};
  machine().launchAgentFiles = {{.label = "zebra"}, {.label = "ollama"}, {.label = "apple"},
                                {.label = "other"}, {.label = "idle"},   {.label = "unloaded"}};
  machine().loadedLaunchAgents = {
      {"zebra", 7}, {"ollama", 7}, {"apple", 7}, {"other", 99}, {"idle", std::nullopt}};
  const auto processes = scan(0);
  ASSERT_EQ(processes.size(), 2U);
  EXPECT_THAT(processes[0].matchedAgents, ElementsAre("ollama", "apple", "zebra"));
  EXPECT_THAT(processes[1].matchedAgents, IsEmpty());
}

TEST_F(ProcessScan, MatchesAPidOnlyToWhoHadItWhenTheManagerWasAsked) {
  machine().processes = {{.pid = 7, .arguments = {"vllm"}}};
  machine().launchAgentFiles = {{.label = "ollama"}};
  machine().loadedLaunchAgents = {{"ollama", 7}};
  machine().loadedAskedAt = 500;
  for (const auto& [startTime, matches] : {std::pair<std::optional<std::uint64_t>, bool>{499, true},
                                           {500, true},
                                           {501, false},
                                           {{}, false}}) {
    machine().processes[0].startTime = startTime;
    EXPECT_EQ(onlyProcess().matchedAgents.size(), matches ? 1U : 0U) << startTime.value_or(0);
  }
}

TEST_F(ProcessScan, StoresNoSecret) {
  machine().processes = {{.pid = 7, .arguments = {"python", "serve.py", "--token", "abc123"}}};
  EXPECT_EQ(onlyProcess().commandLine, "python serve.py --api-key •••");
}

TEST_F(ProcessScan, NamesTheProcessByItsArgumentsElseByItsExecutable) {
  machine().processes = {
      {.pid = 1, .arguments = {"llama-server", "-m", "a.gguf"}, .footprintMB = 2},
      {.pid = 2, .name = "vmmem", .footprintMB = 1}};
  const auto processes = scan(0);
  ASSERT_EQ(processes.size(), 2U);
  EXPECT_EQ(processes[0].displayName, "LM Studio: a");
  EXPECT_EQ(processes[0].product, "LM Studio");
  EXPECT_EQ(processes[1].displayName, "vmmem");
  EXPECT_EQ(processes[1].commandLine, "");
}

TEST_F(ProcessScan, ClassifiesByTheNameThatTheSystemTells) {
  // A title that was written over the arguments; the system knows the executable.
  machine().processes = {{.pid = 1, .arguments = {"tee: x train.py python"}, .name = "tee"},
                         {.pid = 2, .arguments = {"serving: x"}, .name = "Ollama"}};
  const auto processes = scan(0);
  ASSERT_EQ(processes.size(), 2U);
  EXPECT_EQ(processes[0].pid, 2);
  EXPECT_EQ(processes[0].labRole, LabRole::inference);
  EXPECT_EQ(processes[1].labRole, LabRole::none);
}

TEST_F(ProcessScan, AsksTheSystemForNoMoreThanItNeeds) {
  machine().processes = {{.pid = 1, .arguments = {"small"}, .footprintMB = 1},
                         {.pid = 2, .arguments = {"others"}, .effectiveUid = 0},
                         {.pid = 3, .arguments = {"vllm"}, .effectiveUid = 0},
                         {.pid = 4, .arguments = {"vllm"}, .effectiveUid = 0},
                         {.pid = 5, .arguments = {"WindowServer"}}};
  EXPECT_THAT(pids(200), ElementsAre(3, 4));
  EXPECT_EQ(machine().launchAgentFileListings, 1);
  EXPECT_EQ(machine().pidListings, 1);
  EXPECT_EQ(machine().loginNameLookups, 1);
  EXPECT_THAT(machine().footprintsRead, ElementsAre(1, 3, 4));
}

}  // namespace
