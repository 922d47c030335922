// However often a program has scanned, its records are those of a program that scans for the
// first time.
#include <gtest/gtest.h>
#include <unistd.h>

#include <csignal>
#include <cstdio>
#include <map>
#include <memory>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include "launch_agents/launch_agent_scanner.h"
#include "scanner/repeated_scan.h"
#include "tools/puppet.h"
#include "tools/record_line.h"

namespace {

/// By pid, as recordLine tells them.
using Records = std::map<pid_t, std::string>;

Records recordsOfThisProgram() {
  static ProcessScanner::RepeatedScan scan;
  static std::vector<VordaProcess> processes;
  scan.scan(0, LaunchAgentScanner::scan(), processes);
  Records records;
  for (const auto& process : processes) {
    records.emplace(process.pid, recordLine(process));
  }
  return records;
}

Records recordsOfAFreshProgram() {
  Records records;
  std::FILE* const lines = popen(PRINT_RECORDS, "r");
  if (lines == nullptr) return records;
  std::string line;
  for (int c = std::fgetc(lines); c != EOF; c = std::fgetc(lines)) {
    if (c != '\n') {
      line += static_cast<char>(c);
    } else {
      const pid_t pid = std::stoi(line);
      records.emplace(pid, std::exchange(line, {}));
    }
  }
  pclose(lines);
  return records;
}

std::string recordOf(pid_t pid, const Records& records) {
  const auto record = records.find(pid);
  return record == records.end() ? "none" : record->second;
}

void expectAsFresh(const std::vector<pid_t>& pids) {
  // A process may still be busy with what it was told: then both are asked again.
  for (std::vector<pid_t> left = pids; !left.empty();) {
    const Records before = recordsOfAFreshProgram();
    const Records kept = recordsOfThisProgram();
    const Records after = recordsOfAFreshProgram();
    std::erase_if(left, [&](pid_t pid) {
      if (recordOf(pid, before) != recordOf(pid, after)) return false;
      EXPECT_EQ(recordOf(pid, kept), recordOf(pid, before));
      return true;
    });
  }
}

/// Some are AI workloads, some are not, some have one argument alone that holds blanks.
const std::vector<std::string>& someProgram(std::mt19937& random) {
  static const std::vector<std::string> kPrograms[] = {
      {"/opt/bin/python3", "-m", "mlx_lm.server", "--model", "mlx-community/Qwen3-8B-4bit"},
      {"/opt/bin/python3", "train_lora.py", "--hf-token", "hf_0123456789"},
      {"/usr/bin/make", "-j8"},
      {"play_process --type=renderer --lang=en"},
      {"postgres: 15/main: checkpointer"},
  };
  return kPrograms[random() % std::size(kPrograms)];
}

TEST(FreshRecords, AreTheSameWhileProcessesComeAndGo) {
  std::mt19937 random(1);
  std::vector<std::unique_ptr<Puppet>> puppets;
  std::vector<pid_t> everSeen;
  int reused = 0;
  bool mayChoose = true;
  for (int round = 0; round < 12; ++round) {
    for (int i = 0; i < 5; ++i) {
      // Every other one wants the pid of one that is gone.
      pid_t pid = 0;
      for (const pid_t seen : everSeen) {
        if (i % 2 == 0 && kill(seen, 0) != 0) pid = seen;
      }
      auto puppet = std::make_unique<Puppet>(pid);
      if (puppet->pid() < 0) {
        mayChoose = false;
        puppet = std::make_unique<Puppet>();
      }
      if (puppet->pid() == pid) ++reused;
      everSeen.push_back(puppet->pid());
      puppets.push_back(std::move(puppet));
    }
    expectAsFresh(everSeen);
    for (const auto& puppet : puppets) {
      if (!puppet->obeys()) continue;
      switch (random() % 5) {
        case 0:
          puppet->rewriteTitle();
          break;
        case 1:
          puppet->grow();
          break;
        case 2:
          puppet->execute(someProgram(random));
          break;
        case 3:
          if (geteuid() == 0) puppet->changeOwner();
          break;
        default:
          break;
      }
    }
    expectAsFresh(everSeen);
    std::erase_if(puppets, [&](const auto&) { return random() % 3 == 0; });
  }
  EXPECT_TRUE(reused > 0 || !mayChoose) << "no pid had a second process";
}

}  // namespace
