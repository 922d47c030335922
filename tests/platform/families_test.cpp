// Families of real processes: all of them the test's own.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include "fakes/scripted_front_end.h"
#include "platform/processes.h"
#include "scanner/repeated_scan.h"
#include "tools/child_process.h"
#include "tools/eventually.h"
#include "tools/temp_folder.h"
#include "ui/status_bar_controller.h"

namespace {

/// A shell that runs `script` in a session of its own: else whoever leads the session that the
/// tests run in would lead its family, too.
std::vector<std::string> shellOf(const std::string& script) {
  return {"/usr/bin/setsid", "/bin/sh", "-c", script, "sh"};
}

/// The same, with one process of 60 MB and another, small one below it.
std::vector<std::string> workOf(const std::string& script) {
  std::vector<std::string> argv = shellOf(script);
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

  /// Scans until a process of that family runs `program` (for a moment it is still the shell that
  /// starts it), or a minute is over: its pid, or 0.
  pid_t memberThatRuns(const std::string& program, pid_t head) {
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::minutes(1);
    while (std::chrono::steady_clock::now() < deadline) {
      for (const VordaProcess& process : belowOf(head)) {
        if (process.commandLine.starts_with(program)) return process.pid;
      }
      std::this_thread::sleep_for(std::chrono::milliseconds(20));
    }
    return 0;
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
  ChildProcess shell(shellOf("sleep 600 & echo ready; wait"));
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

/// Waits until it has ended, a minute at most. Where NVIDIA's driver is installed, the program that
/// asks it is a child, too: this waits for one alone.
bool isReaped(pid_t child) {
  return eventually([child] { return waitpid(child, nullptr, WNOHANG) != 0; },
                    std::chrono::milliseconds(1));
}

/// The engine's row as the menu shows it.
const MenuItem* rowOf(pid_t pid, const Menu& menu) {
  for (const MenuItem& item : menu.items) {
    if (item.process && item.process->pid == pid) return &item;
  }
  return nullptr;
}

TEST_F(RealFamilies, AnEngineThatOutlivesItsProgramSaysSo) {
  const TempFolder folder;
  const std::string server = (folder / "llama-server").string();
  std::filesystem::copy_file("/bin/sleep", server);
  ChildProcess program(shellOf(server + " 600 & echo ready; wait"));
  const pid_t engine = memberThatRuns(server, program.pid());
  ASSERT_GT(engine, 0);
  ScriptedFrontEnd frontEnd;
  StatusBarController controller(frontEnd, {});
  MenuArrangement whole;
  whole.isWhole = true;
  controller.arrange(whole);  // however many others the machine runs
  const pid_t head = program.pid();
  ASSERT_NE(rowOf(engine, *controller.rootMenu()), nullptr);
  EXPECT_FALSE(rowOf(engine, *controller.rootMenu())->isLeftBehind);

  program.end();
  controller.menuNeedsUpdate();
  const std::string line =
      "Left behind: pid " + std::to_string(head) + ", which started it, has ended";
  const MenuItem* const row = rowOf(engine, *controller.rootMenu());
  ASSERT_NE(row, nullptr) << "it lives on";
  EXPECT_TRUE(row->isLeftBehind);
  EXPECT_THAT(row->toolTip, testing::HasSubstr("\n" + line));
  EXPECT_THAT(row->submenu, testing::Contains(testing::Field(&MenuItem::title, line)));
  for (const MenuItem& item : row->submenu) {
    if (item.action == Action::showDetails) {
      controller.perform({controller.rootMenu(), &item});
    }
  }
  ASSERT_EQ(frontEnd.alerts.size(), 1U);
  EXPECT_THAT(frontEnd.alerts[0].informativeText, testing::HasSubstr("\n" + line + "\n"));
}

TEST_F(RealFamilies, WhatAShellLeftOnPurposeIsNotLeftBehind) {
  // A shell that reads what is typed, as its options say.
  const TempFolder folder;
  folder.write("typed", "nohup sleep 600 >/dev/null 2>&1 & echo $! >" + (folder / "pid").string() +
                            "; echo ready; sleep 600\n");
  ChildProcess shell(
      {"/bin/sh", "-c", "exec /bin/sh -i <" + (folder / "typed").string() + " 2>/dev/null"});
  pid_t job = 0;
  std::ifstream(folder / "pid") >> job;
  ASSERT_GT(job, 0);
  const auto jobIn = [&](const auto& processes) {
    return std::ranges::find(processes, job, &VordaProcess::pid);
  };
  scan_.scan(0, {}, processes_);
  ASSERT_NE(jobIn(processes_), processes_.end());
  shell.end();
  for (int i = 0; i < 2; ++i) {
    scan_.scan(0, {}, processes_);
    const auto process = jobIn(processes_);
    ASSERT_NE(process, processes_.end()) << "it lives on";
    EXPECT_EQ(process->leftBehindBy, std::nullopt);
  }
}

struct EndRow {
  Action action;
  const char* script;
};

class EndOfARealFamily : public RealFamilies, public testing::WithParamInterface<EndRow> {};

TEST_P(EndOfARealFamily, EndsEveryMember) {
  ChildProcess shell(workOf(GetParam().script));
  const pid_t head = shell.pid();
  const auto members = belowOf(head, 3);
  ASSERT_EQ(members.size(), 3U);
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
  for (const VordaProcess& member : members) {
    EXPECT_TRUE(member.pid == head || isReaped(member.pid)) << "nobody is left";
  }
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
