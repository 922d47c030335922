#include <chrono>
#include <filesystem>
#include <fstream>
#include <functional>
#include <stdexcept>
#include <string>
#include <thread>

#include "child.h"
#include "cpu_clock.h"
#include "memory_in_use.h"
#include "parts.h"
#include "population.h"
#include "tray_desktop.h"

namespace bench {
namespace {

using namespace std::chrono_literals;
namespace fs = std::filesystem;

constexpr std::size_t kProcesses = 500;
constexpr double kMebibyte = 1048576;
constexpr double kRefreshInterval = 5;  // seconds
constexpr int kRefreshes = 4;           // that a measurement lasts
constexpr double kAfterClosing = 36;    // seconds: threads that drew the menu end after 30

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

/// Lets time pass, and does `meanwhile` ten times a second.
void idle(double seconds, const std::function<void()>& meanwhile) {
  for (const auto end = std::chrono::steady_clock::now() + seconds * 1s;
       std::chrono::steady_clock::now() < end;) {
    std::this_thread::sleep_for(100ms);
    meanwhile();
  }
}

/// The program with one of its faces, running.
class Edition {
 public:
  Edition(std::string name, Child& child, std::function<void()> meanwhile, Report& report)
      : name_(std::move(name)), child_(child), meanwhile_(std::move(meanwhile)), report_(report) {}

  void wait(double seconds) const { idle(seconds, meanwhile_); }

  /// What it takes from now on, until it has refreshed a few times.
  void measure(const std::string& menu) {
    const double cpu = cpuSecondsOf(child_.pid());
    const double slept = sleeps(child_.pid());
    wait(kRefreshes * kRefreshInterval);
    const double used = cpuSecondsOf(child_.pid()) - cpu;
    const double woken = sleeps(child_.pid()) - slept;
    const MemoryInUse memory = memoryInUse(std::to_string(child_.pid()));
    const std::string what = name_ + ", " + menu;
    if (!child_.running()) return report_.missing(what, "it ended");

    constexpr double kSeconds = kRefreshes * kRefreshInterval;
    report_.figure("rest", what + ": CPU s per hour", used / kSeconds * 3600);
    report_.figure("rest", what + ": wakeups per 5 s", woken / kRefreshes);
    report_.figure("rest", what + ": anonymous memory (MB)", memory.anonymous / kMebibyte);
    report_.figure("rest", what + ": resident memory (MB)", memory.resident / kMebibyte);
  }

 private:
  std::string name_;
  Child& child_;
  std::function<void()> meanwhile_;
  Report& report_;
};

/// It prints the menu and ends: it is never at rest.
void measureText(Report& report) {
  report.figure("rest", "text: CPU ms of a run", cpuSecondsOfRun({PROGRAM}) * 1e3);
}

void measureTerminal(Report& report) {
  Child child({PROGRAM}, {"TERM=xterm-256color", "LANG=C.UTF-8", "SSH_TTY=/dev/pts/0"},
              Child::Output::terminal);
  Edition terminal(
      "terminal", child, [&child] { child.drain(); }, report);
  terminal.wait(kRefreshInterval + 1);
  terminal.measure("menu closed");
  child.type("\r");  // the submenu of the selected row
  terminal.wait(1);
  terminal.measure("menu open");
}

void measureTray(Report& report) {
  if (!isInstalled(TRAY_PROGRAM)) return report.missing("tray", "not built");
  TrayDesktop desktop;
  if (!desktop.problem().empty()) return report.missing("tray", desktop.problem());
  Child child({TRAY_PROGRAM}, desktop.environment(), Child::Output::discarded);
  Edition tray(
      "tray", child, [&desktop] { desktop.answer(); }, report);
  tray.wait(kRefreshInterval + 1);
  if (!desktop.hasIcon()) return report.missing("tray", "no icon appears");
  tray.measure("menu never opened");
  desktop.click();
  tray.wait(1);
  tray.measure("menu open");
  desktop.click();
  tray.wait(kAfterClosing);
  tray.measure("menu closed again");
}

}  // namespace

void measureRest(const Options&, Report& report) {
  report.section("At rest, with " + std::to_string(kProcesses) + " processes");
  try {
    const Population population(planPopulation(kProcesses, Mix::machine));
    measureText(report);
    measureTerminal(report);
    measureTray(report);
  } catch (const std::runtime_error& error) {
    report.missing("the program at rest", error.what());
  }
}

}  // namespace bench
