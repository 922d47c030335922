#include <algorithm>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "child.h"
#include "cpu_clock.h"
#include "memory_in_use.h"
#include "parts.h"
#include "peers.h"
#include "population.h"
#include "rounds.h"
#include "scratch_folder.h"
#include "tray_desktop.h"

namespace bench {
namespace {

using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;

constexpr auto kInterval = 5s;  // of all that are compared
constexpr double kBytesInMB = 1048576;

/// A monitor with its settings in a folder of its own.
class RunningMonitor {
 public:
  explicit RunningMonitor(const PacedMonitor& monitor) {
    std::vector<std::string> environment = terminalEnvironment();
    environment.push_back("XDG_CONFIG_HOME=" + folder_.path().string());
    environment.push_back("HTOPRC=" + (folder_.path() / "htoprc").string());
    if (!monitor.settingsFile.empty()) {
      const auto file = folder_.path() / monitor.settingsFile;
      std::filesystem::create_directories(file.parent_path());
      std::ofstream(file) << monitor.settings;
    }
    child_ = std::make_unique<Child>(monitor.argv, environment, Child::Output::terminal);
  }
  Child& child() { return *child_; }

 private:
  ScratchFolder folder_;
  std::unique_ptr<Child> child_;
};

std::vector<std::string> environmentOfTerminal() {
  std::vector<std::string> environment = terminalEnvironment();
  environment.emplace_back("SSH_TTY=/dev/pts/0");
  return environment;
}

/// The wall time until it has painted: written more than what sets the terminal up. None: it has
/// not within 10 seconds.
std::optional<double> secondsToFirstPaint(const Child& child, Clock::time_point start) {
  constexpr std::size_t kMoreThanSetUp = 1500;
  std::size_t written = 0;
  while (Clock::now() - start < 10s) {
    written += child.drain();
    if (written >= kMoreThanSetUp) {
      return std::chrono::duration<double>(Clock::now() - start).count();
    }
    std::this_thread::sleep_for(200us);
  }
  return std::nullopt;
}

/// In turns, each started anew.
void measureFirstPaint(const std::string& at, int rounds, Report& report) {
  const auto monitors = pacedMonitors();
  const auto btop = std::ranges::find(monitors, "btop", &PacedMonitor::name);
  if (!isInstalled(btop->argv.front())) return report.missing("first paint" + at, "no btop");
  std::vector<double> own;
  std::vector<double> peers;
  for (int i = 0; i < rounds; ++i) {
    const auto ownStart = Clock::now();
    const Child program({PROGRAM}, environmentOfTerminal(), Child::Output::terminal);
    const auto ownTime = secondsToFirstPaint(program, ownStart);
    const auto peerStart = Clock::now();
    RunningMonitor peer(*btop);
    const auto peerTime = secondsToFirstPaint(peer.child(), peerStart);
    if (!ownTime || !peerTime) return report.missing("first paint" + at, "nothing is painted");
    own.push_back(*ownTime);
    peers.push_back(*peerTime);
  }
  report.figure("milliseconds", "first paint" + at, spread(own).median * 1e3);
  report.figure("milliseconds", "first paint of btop" + at, spread(peers).median * 1e3);
  report.ratio("first paint/btop" + at, ratio(own, peers));
}

/// All that are compared, running beside each other: what the others do between two refreshes of
/// one is what empties the caches.
void measurePaced(const std::string& at, int rounds, Report& report) {
  struct Runner {
    std::string name;
    Child* child;
  };
  std::vector<Runner> runners;
  Child terminal({PROGRAM}, environmentOfTerminal(), Child::Output::terminal);
  runners.push_back({"terminal", &terminal});

  std::optional<TrayDesktop> desktop;
  std::optional<Child> tray;
  if (isInstalled(TRAY_PROGRAM)) {
    desktop.emplace();
    if (desktop->problem().empty()) {
      tray.emplace(std::vector<std::string>{TRAY_PROGRAM}, desktop->environment(),
                   Child::Output::discarded);
      runners.push_back({"tray", &*tray});
    } else {
      report.missing("tray at its pace" + at, desktop->problem());
    }
  } else {
    report.missing("tray at its pace" + at, "not built");
  }

  std::vector<std::unique_ptr<RunningMonitor>> monitors;
  for (const PacedMonitor& monitor : pacedMonitors()) {
    if (!isInstalled(monitor.argv.front())) {
      report.missing(monitor.name + " at its pace" + at, "not installed");
      continue;
    }
    monitors.push_back(std::make_unique<RunningMonitor>(monitor));
    runners.push_back({monitor.name, &monitors.back()->child()});
  }

  const auto pass = [&](Clock::duration time) {
    for (const auto end = Clock::now() + time; Clock::now() < end;) {
      std::this_thread::sleep_for(100ms);
      for (const Runner& runner : runners) runner.child->drain();
      if (desktop) desktop->answer();
    }
  };
  pass(2 * kInterval);
  Measurements used;
  std::map<std::string, double> before;
  for (const Runner& runner : runners) before[runner.name] = cpuSecondsOf(runner.child->pid());
  for (int i = 0; i < rounds; ++i) {
    pass(kInterval);
    for (const Runner& runner : runners) {
      const double now = cpuSecondsOf(runner.child->pid());
      used[runner.name].push_back(now - std::exchange(before[runner.name], now));
    }
  }

  std::string cheapest;
  for (const Runner& runner : runners) {
    if (!runner.child->running()) {
      report.missing(runner.name + " at its pace" + at, "it ended");
      used.erase(runner.name);
      continue;
    }
    const double median = spread(used[runner.name]).median;
    report.figure("milliseconds", runner.name + ", every 5 s" + at, median * 1e3);
    const bool isPeer = runner.name != "terminal" && runner.name != "tray";
    if (isPeer && (cheapest.empty() || median < spread(used[cheapest]).median)) {
      cheapest = runner.name;
    }
  }
  for (const std::string name : {"terminal", "tray"}) {
    if (!used.contains(name) || cheapest.empty()) continue;
    report.ratio(std::string(name).append("/cheapest peer").append(at),
                 ratio(used[name], used[cheapest]));
  }
  if (!terminal.running()) return;
  report.ratio("terminal: RssAnon (MB)" + at,
               spread({memoryInUse(std::to_string(terminal.pid())).anonymous / kBytesInMB}));
}

}  // namespace

void measurePace(const Options& options, Report& report) {
  for (const std::size_t count : options.processes) {
    const std::string at = "@" + std::to_string(count);
    report.section("At the pace of use, every 5 s, at " + std::to_string(count));
    try {
      const Population population(planPopulation(count, Mix::machine));
      measureFirstPaint(at, options.rounds, report);
      measurePaced(at, options.rounds, report);
    } catch (const std::runtime_error& error) {
      report.missing("the pace of use" + at, error.what());
    }
  }
}

}  // namespace bench
