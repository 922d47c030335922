// Families of real processes: all of them the test's own.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <fstream>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include "fakes/scripted_front_end.h"
#include "platform/processes.h"
#include "scanner/repeated_scan.h"
#include "tools/child_process.h"
#include "ui/status_bar_controller.h"

namespace {

/// A shell that runs `script`, with one process of 60 MB and another, small one below it.
std::vector<std::string> workOf(const std::string& script) {
  std::vector<std::string> argv{"/bin/sh", "-c", script, "sh"};
  for (std::string& word : playProcess({"--memory", "60"})) argv.push_back(std::move(word));
  return argv;
}

class RealFamilies : public testing::Test {
 protected:
  /// Who loses its parent becomes the test's, so that the test can end it.
  RealFamilies() { prctl(PR_SET_CHILD_SUBREAPER, 1); }
  /// Ends what a test that failed has left: its own children alone.
  ~RealFamilies() override {
    std::ifstream children("/proc/self/task/" + std::to_string(getpid()) + "/children");
    for (pid_t child = 0; children >> child;) {
      kill(child, SIGKILL);
      waitpid(child, nullptr, 0);
    }
    prctl(PR_SET_CHILD_SUBREAPER, 0);
  }

  /// Scans until `count` processes are of that family, or a minute is over.
  std::vector<VordaProcess> belowOf(pid_t head, std::size_t count) {
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::minutes(1);
    for (;;) {
      auto members = belowOf(head);
      if (members.size() == count || std::chrono::steady_clock::now() > deadline) return members;
      std::this_thread::sleep_for(std::chrono::milliseconds(20));
    }
  }

  std::vector<VordaProcess> belowOf(pid_t head) {
    scan_.scan(0, {}, processes_);
    std::vector<VordaProcess> members;
    for (const VordaProcess& process : processes_) {
      if (process.family == head) members.push_back(process);
    }
    return members;
  }

  ProcessScanner::RepeatedScan scan_;
  std::vector<VordaProcess> processes_;
};

TEST_F(RealFamilies, AreFoundAndKnowWhoHasEnded) {
  ChildProcess shell({"/bin/sh", "-c", "sleep 600 & echo ready; wait"});
  const auto members = belowOf(shell.pid(), 2);
  ASSERT_EQ(members.size(), 2U) << "the shell and its sleep";
  const pid_t sleep = members[0].pid == shell.pid() ? members[1].pid : members[0].pid;
  const pid_t head = shell.pid();
  shell.end();
  belowOf(head);
  std::optional<std::int32_t> leftBehindBy;
  for (const VordaProcess& process : processes_) {
    if (process.pid == sleep) leftBehindBy = process.leftBehindBy;
  }
  EXPECT_EQ(leftBehindBy, head);
  kill(sleep, SIGKILL);
  waitpid(sleep, nullptr, 0);
}

struct EndRow {
  Action action;
  const char* script;
};

class EndOfARealFamily : public RealFamilies, public testing::WithParamInterface<EndRow> {};

TEST_P(EndOfARealFamily, EndsEveryMember) {
  ChildProcess shell(workOf(GetParam().script));
  ASSERT_EQ(belowOf(shell.pid(), 3).size(), 3U);
  ScriptedFrontEnd frontEnd;
  StatusBarController controller(frontEnd, {});
  const auto choose = std::make_shared<MenuItem>();
  choose->action = GetParam().action;
  choose->representedObject = std::int32_t{shell.pid()};
  controller.perform(choose);
  ASSERT_EQ(frontEnd.alerts.size(), 1U);
  EXPECT_THAT(frontEnd.alerts[0].messageText, testing::HasSubstr("all 3 processes"));
  // The front end's clock is the test's: nobody has had any time yet to end.
  if (GetParam().action == Action::quitFamily) frontEnd.advance(5);
  EXPECT_TRUE(shell.wait());
  for (int seconds = 0; seconds < 60 && waitpid(-1, nullptr, 0) > 0; ++seconds) {
  }
  EXPECT_EQ(waitpid(-1, nullptr, WNOHANG), -1) << "nobody is left";
  frontEnd.advance(20);
  EXPECT_EQ(frontEnd.alerts.size(), 1U) << frontEnd.alerts.back().informativeText;
}

INSTANTIATE_TEST_SUITE_P(Table, EndOfARealFamily,
                         testing::Values(EndRow{Action::forceFamily, "sleep 600 & \"$@\" & wait"},
                                         EndRow{Action::quitFamily, "sleep 600 & \"$@\" & wait"}),
                         [](const auto& row) {
                           return std::string(row.index == 0 ? "ForceQuit" : "Quit");
                         });

}  // namespace
