#include <chrono>
#include <filesystem>
#include <fstream>
#include <string>
#include <thread>

#include "child.h"
#include "cpu_clock.h"
#include "memory_in_use.h"
#include "parts.h"
#include "population.h"

namespace bench {
namespace {

using namespace std::chrono_literals;
namespace fs = std::filesystem;

constexpr std::size_t kProcesses = 500;
constexpr double kMebibyte = 1048576;
constexpr double kRefreshInterval = 5;  // seconds
constexpr int kRefreshes = 4;           // that a measurement lasts

/// How often any thread of a process has gone to sleep by itself: each time something woke it.
double sleeps(pid_t pid) {
  constexpr std::string_view kKey = "voluntary_ctxt_switches:";
  double count = 0;
  std::error_code error;
  for (const auto& task : fs::directory_iterator("/proc/" + std::to_string(pid) + "/task", error)) {
    std::ifstream status(task.path() / "status");
    for (std::string line; std::getline(status, line);) {
      if (line.starts_with(kKey)) count += std::stod(line.substr(kKey.size()));
    }
  }
  return count;
}

void idle(const Child& child, double seconds) {
  for (const auto end = std::chrono::steady_clock::now() + seconds * 1s;
       std::chrono::steady_clock::now() < end;) {
    std::this_thread::sleep_for(100ms);
    child.drain();
  }
}

/// What the program takes from now on, until it has refreshed a few times.
void measureAtRest(const std::string& edition, const std::string& menu, Child& child,
                   Report& report) {
  const double cpu = cpuSecondsOf(child.pid());
  const double slept = sleeps(child.pid());
  idle(child, kRefreshes * kRefreshInterval);
  const double used = cpuSecondsOf(child.pid()) - cpu;
  const double woken = sleeps(child.pid()) - slept;
  const MemoryInUse memory = memoryInUse(std::to_string(child.pid()));
  if (!child.running()) return report.missing(edition + ", " + menu, "it ended");

  const std::string what = edition + ", " + menu + ": ";
  report.figure("rest", what + "CPU s per hour", used / (kRefreshes * kRefreshInterval) * 3600);
  report.figure("rest", what + "wakeups per 5 s", woken / kRefreshes);
  report.figure("rest", what + "anonymous memory (MB)", memory.anonymous / kMebibyte);
  report.figure("rest", what + "resident memory (MB)", memory.resident / kMebibyte);
}

/// It prints the menu and ends: it is never at rest.
void measureText(Report& report) {
  report.figure("rest", "text: CPU ms of a run", cpuSecondsOfRun({PROGRAM}) * 1e3);
}

void measureTerminal(Report& report) {
  Child child({PROGRAM}, {"TERM=xterm-256color", "LANG=C.UTF-8", "SSH_TTY=/dev/pts/0"},
              Child::Output::terminal);
  idle(child, kRefreshInterval + 1);
  measureAtRest("terminal", "menu closed", child, report);
  child.type("\r");  // the submenu of the selected row
  idle(child, 1);
  measureAtRest("terminal", "menu open", child, report);
}

}  // namespace

void measureRest(const Options&, Report& report) {
  report.section("At rest, with " + std::to_string(kProcesses) + " processes");
  const Population population(planPopulation(kProcesses, Mix::machine));
  measureText(report);
  measureTerminal(report);
}

}  // namespace bench
