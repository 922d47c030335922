#include "scanner/repeated_scan.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>
#include <vector>

#include "fakes/scripted_platform.h"
#include "launch_agents/launch_agent_scanner.h"
#include "scanner/process_scanner.h"
#include "text/path.h"
#include "tools/record_line.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class RepeatedScan : public testing::Test {
 protected:
  RepeatedScan() { resetMachine(); }

  const std::vector<VordaProcess>& scanned(double minMemMB = 50) {
    machine().commandLinesRead = 0;
    machine().executablesAsked.clear();
    scan_.scan(minMemMB, LaunchAgentScanner::scan(), processes_);
    return processes_;
  }

  std::vector<std::int32_t> pids(double minMemMB = 50) {
    std::vector<std::int32_t> result;
    for (const auto& process : scanned(minMemMB)) result.push_back(process.pid);
    return result;
  }

  static std::vector<std::string> lines(const std::vector<VordaProcess>& processes) {
    std::vector<std::string> result(processes.size());
    std::ranges::transform(processes, result.begin(), recordLine);
    return result;
  }

  ProcessScanner::RepeatedScan scan_;
  std::vector<VordaProcess> processes_;
};

/// As the system reads a title: cut at blanks where its first word is the executable's name.
void setTitle(ScriptedProcess& process, const std::string& title, const std::string& executable) {
  process.title = title;
  process.executable = executable;
  process.arguments = {title};
  const std::string word = title.substr(0, title.find(' '));
  if (text::lastPathComponent(word) != text::lastPathComponent(executable)) return;
  process.arguments.clear();
  for (std::size_t begin = 0; begin < title.size();) {
    const std::size_t end = std::min(title.find(' ', begin), title.size());
    if (end > begin) process.arguments.push_back(title.substr(begin, end - begin));
    begin = end + 1;
  }
}

TEST_F(RepeatedScan, ReadsACommandLineOnce) {
  machine().processes = {{.pid = 1, .arguments = {"small"}, .footprintMB = 1},
                         {.pid = 2, .arguments = {"others"}, .effectiveUid = 0},
                         {.pid = 3, .arguments = {"vllm", "serve"}},
                         {.pid = 4, .arguments = {"large"}}};
  const auto first = lines(scanned());
  EXPECT_EQ(machine().commandLinesRead, 4);
  EXPECT_EQ(lines(scanned()), first);
  EXPECT_EQ(machine().commandLinesRead, 0);

  machine().find(1)->footprintMB = 60;
  EXPECT_THAT(pids(), ElementsAre(3, 4, 1));
  EXPECT_EQ(machine().commandLinesRead, 1) << "what was not listed has no name yet";
  machine().find(3)->arguments = {"jupyter", "lab"};
  EXPECT_EQ(scanned().at(0).displayName, "JupyterLab");
  EXPECT_EQ(machine().commandLinesRead, 1);
}

TEST_F(RepeatedScan, ReadsAgainWhatHasNoFingerprint) {
  machine().processes = {{.pid = 1, .name = "worker"}};
  machine().processes[0].arguments.clear();
  machine().processes[0].noFingerprint = true;
  EXPECT_EQ(scanned().at(0).displayName, "worker");
  machine().processes[0].name = "other";
  EXPECT_EQ(scanned().at(0).displayName, "other");
}

TEST_F(RepeatedScan, KeepsNothingForTheNextProcessOfAPid) {
  machine().processes = {{.pid = 7, .arguments = {"vllm"}, .identity = 70, .startTime = 1}};
  EXPECT_EQ(scanned().at(0).identity, 70U);
  machine().processes = {{.pid = 7, .arguments = {"vllm"}, .effectiveUid = 0, .identity = 71}};
  EXPECT_EQ(scanned().at(0).identity, 71U);
  EXPECT_EQ(processes_[0].ownerName, "root");
  machine().processes.clear();
  EXPECT_THAT(pids(), IsEmpty());
  machine().processes = {{.pid = 7, .arguments = {"vllm"}, .identity = 72}};
  scanned();
  EXPECT_EQ(machine().commandLinesRead, 1) << "the one that is gone is forgotten";
}

TEST_F(RepeatedScan, MakesARowAnewThatWasTakenFromTheList) {
  machine().processes = {{.pid = 7, .arguments = {"vllm"}}, {.pid = 8, .arguments = {"jupyter"}}};
  const auto first = lines(scanned());
  processes_.erase(processes_.begin());
  EXPECT_EQ(lines(scanned()), first);
  processes_.clear();
  EXPECT_EQ(lines(scanned()), first);
}

TEST_F(RepeatedScan, AsksTheExecutableOfATitleWhereItMatters) {
  machine().processes = {{.pid = 1, .footprintMB = 1},
                         {.pid = 2, .effectiveUid = 0},
                         {.pid = 3},
                         {.pid = 4, .effectiveUid = 0},
                         {.pid = 5, .effectiveUid = 0}};
  setTitle(machine().processes[0], "app --type=renderer", "/bin/app");
  setTitle(machine().processes[1], "app --type=renderer", "/bin/app");
  setTitle(machine().processes[2], "app --type=renderer", "/bin/app");
  setTitle(machine().processes[3], "tee --log vllm", "/bin/tee");
  setTitle(machine().processes[4], "app vllm", "/bin/app");
  EXPECT_THAT(pids(), ElementsAre(5, 3));
  EXPECT_THAT(pids(), ElementsAre(5, 3));
  EXPECT_THAT(machine().executablesAsked, ElementsAre(3, 4, 5))
      << "not of those that are ordinary however they are read, and not listed";

  setTitle(machine().processes[3], "tee --log vllm", "/bin/other");
  ASSERT_THAT(pids(), ElementsAre(4, 5, 3)) << "no tee any more, but a program that wrote a title";
  setTitle(machine().processes[2], "app --type=renderer", "/bin/other");
  EXPECT_EQ(scanned().at(2).displayName, "app --type=renderer");
}

/// Whatever happens to processes, what was kept of them is what is so.
TEST_F(RepeatedScan, TellsWhatAFirstScanTells) {
  std::mt19937 random(1);
  const auto oneOf = [&random](const auto& list) { return list[random() % std::size(list)]; };
  const std::vector<std::string> lines[] = {
      {"/opt/bin/python3", "-m", "mlx_lm.server", "--model", "mlx-community/Qwen3-8B-4bit"},
      {"/opt/bin/python3", "train_lora.py", "--hf-token", "hf_0123456789"},
      {"make", "-j8"},
      {"launchd"},
      {"bash", "-c", "vllm serve"},
      {"/Applications/Foo.app/Foo", "--password", "x"}};
  const char* const titles[] = {"app --type=renderer", "tee --log vllm", "python3 train.py",
                                "launchd --user", "app: idle"};
  const char* const executables[] = {"/bin/app", "/bin/tee", "/usr/bin/python3", "/sbin/launchd"};
  std::uint64_t identity = 0;
  const auto become = [&](ScriptedProcess& process) {
    process.title.clear();
    process.executable.clear();
    if (random() % 2 == 0) {
      process.arguments = oneOf(lines);
    } else {
      setTitle(process, oneOf(titles), oneOf(executables));
    }
  };
  machine().launchAgentFiles = {{.label = "ollama"}};

  for (int round = 0; round < 2000; ++round) {
    const std::int32_t pid = 1 + static_cast<std::int32_t>(random() % 12);
    ScriptedProcess* process = machine().find(pid);
    switch (random() % 8) {
      case 0:  // it ends, and maybe another has its pid
        std::erase_if(machine().processes, [pid](const auto& one) { return one.pid == pid; });
        [[fallthrough]];
      case 1:
        if (machine().find(pid) == nullptr) {
          machine().processes.push_back({.pid = pid, .identity = ++identity});
          become(machine().processes.back());
        }
        break;
      case 2:
        if (process != nullptr) become(*process);
        break;
      case 3:
        if (process != nullptr) process->effectiveUid = random() % 2 == 0 ? 1000 : 1001;
        break;
      case 4:
        if (process != nullptr) process->footprintMB = static_cast<int>(random() % 3) * 40;
        break;
      case 5:
        if (process != nullptr && !process->title.empty()) {
          setTitle(*process, process->title, oneOf(executables));
        }
        break;
      case 6:
        machine().loadedLaunchAgents = {{"ollama", pid}};
        break;
      default:
        if (!processes_.empty()) processes_.erase(processes_.begin());
        break;
    }
    const double minMemMB = random() % 2 == 0 ? 0 : 50;
    ASSERT_EQ(RepeatedScan::lines(scanned(minMemMB)),
              RepeatedScan::lines(ProcessScanner::scan(minMemMB)))
        << round;
  }
}

TEST(ProcessCache, AreThoseOfTheLastScan) {
  ProcessScanner::ProcessCache known;
  std::vector<VordaProcess> rows;
  for (const auto& pids :
       std::vector<std::vector<std::int32_t>>{{5, 3, 9}, {9, 3, 4}, {1}, {}, {2, 1, 70, 69}}) {
    known.begin(rows);
    for (const auto pid : pids) EXPECT_EQ(known.of(pid).pid, pid);
    known.end();
    EXPECT_EQ(known.size(), pids.size());
  }
}

}  // namespace
