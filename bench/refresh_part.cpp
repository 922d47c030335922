#include <algorithm>
#include <chrono>
#include <limits>
#include <stdexcept>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "cache_flush.h"
#include "cpu_clock.h"
#include "floor.h"
#include "launch_agents/launch_agent_scanner.h"
#include "parts.h"
#include "peers.h"
#include "population.h"
#include "refresh_cycle.h"
#include "rounds.h"
#include "scanner/process_scanner.h"
#include "scanner/repeated_scan.h"
#include "tools/allocation_counter.h"

namespace bench {
namespace {

constexpr double kMinMemMB = 50;  // the program's own threshold

/// What is compared: what the kernel takes, the scan, a scan to which everything is new, and the
/// whole refresh.
class Own {
 public:
  std::vector<Contestant> contestants() {
    return {
        {"floor", [this] { return cpuSecondsOfWork([this] { floor_.read(); }); }},
        {"scan",
         [this] {
           return cpuSecondsOfWork(
               [this] { scan_.scan(kMinMemMB, launchAgents_.scan(), processes_); });
         }},
        {"storm", [] { return cpuSecondsOfWork([] { ProcessScanner::scan(kMinMemMB); }); }},
        {"refresh", [this] { return cpuSecondsOfWork([this] { cycle_.tick(); }); }},
    };
  }

  double allocationsOfScan() {
    const auto& agents = launchAgents_.scan();
    return fewestAllocations([&] { scan_.scan(kMinMemMB, agents, processes_); });
  }
  double allocationsOfRefresh() {
    return fewestAllocations([this] { cycle_.tick(); });
  }

 private:
  /// Of a few times: other processes come and go.
  template <typename Work>
  static double fewestAllocations(const Work& work) {
    double fewest = std::numeric_limits<double>::max();
    for (int i = 0; i < 10; ++i) {
      const auto before = allocationCount();
      work();
      fewest = std::min(fewest, static_cast<double>(allocationCount() - before));
    }
    return fewest;
  }

  Floor floor_;
  LaunchAgentScanner::RepeatedScan launchAgents_;
  ProcessScanner::RepeatedScan scan_;
  std::vector<VordaProcess> processes_;
  RefreshCycle cycle_;
};

/// The same at the pace of use, when other work has had the caches meanwhile.
std::vector<Contestant> afterOtherWork(std::vector<Contestant> contestants) {
  for (Contestant& contestant : contestants) {
    contestant.run = [run = std::move(contestant.run)] {
      flushCaches();
      return run();
    };
  }
  return contestants;
}

Spread inMilliseconds(const std::vector<double>& seconds) {
  const Spread spread = bench::spread(seconds);
  return {spread.median * 1e3, spread.lowerQuartile * 1e3, spread.upperQuartile * 1e3};
}

void againstFloor(Own& own, int rounds, const std::string& at, Report& report) {
  for (const bool isCold : {false, true}) {
    const Measurements measured =
        alternate(isCold ? afterOtherWork(own.contestants()) : own.contestants(), rounds);
    const std::string where = (isCold ? ", cold" : "") + at;
    for (const auto& [name, seconds] : measured) {
      report.figure("milliseconds", name + where, inMilliseconds(seconds));
    }
    for (const std::string name : {"scan", "storm", "refresh"}) {
      const std::string quotient = name + "/floor";
      report.ratio(quotient + where, ratio(measured.at(name), measured.at("floor")));
    }
  }
}

void againstPeer(Own& own, const PeerProgram& program, int rounds, const std::string& at,
                 Report& report) {
  if (!program.installed) return report.missing(program.name + at, "not installed");
  const auto peer = program.start();
  auto contestants = own.contestants();
  contestants.push_back({program.name, [&peer] { return peer->refresh(); }});
  constexpr std::chrono::seconds kLongest{120};
  const Measurements measured = alternate(contestants, rounds, kLongest);
  const auto& cost = measured.at(program.name);
  if (*std::ranges::min_element(cost) <= 0)
    return report.missing(program.name + at, "its refreshes can't be made out");
  if (cost.size() < static_cast<std::size_t>(rounds))
    report.missing(program.name + at + ", some rounds",
                   "only " + std::to_string(cost.size()) + " of them in 120 s");
  report.figure("milliseconds", program.name + at, inMilliseconds(cost));
  for (const std::string name : {"scan", "refresh"}) {
    const std::string quotient = name + "/" + program.name;
    report.ratio(quotient + at, ratio(measured.at(name), cost));
  }
}

void measureAt(const std::string& at, const Options& options, Report& report) {
  Own own;
  if (options.wants("refresh")) {
    againstFloor(own, options.rounds, at, report);
    report.figure("growth", "allocations of an unchanged scan" + at, own.allocationsOfScan());
    report.figure("growth", "allocations of an unchanged refresh" + at, own.allocationsOfRefresh());
    report.figure("memory", "sampler memory" + at + " (MB)",
                  sampledMemoryOfFreshProgram() / 1048576);
  }
  if (options.wants("peers")) {
    for (const auto& program : peerPrograms()) {
      againstPeer(own, program, options.rounds, at, report);
    }
  }
}

/// As on a machine that is used: a quarter of the processes has run since the scan before.
void measureAwakeAt(std::size_t count, const std::string& at, int rounds, Report& report) {
  constexpr int kWakesMs = 20;
  const Population population(planAwakePopulation(count, kWakesMs));
  Own own;
  std::vector<Contestant> contestants;
  for (Contestant& contestant : afterOtherWork(own.contestants())) {
    if (contestant.name == "storm") continue;
    contestants.push_back({contestant.name, [run = std::move(contestant.run)] {
                             std::this_thread::sleep_for(std::chrono::milliseconds(kWakesMs + 5));
                             return run();
                           }});
  }
  const Measurements measured = alternate(contestants, rounds);
  const std::string where = "/floor, cold, a quarter awake" + at;
  for (const std::string name : {"scan", "refresh"}) {
    report.ratio(name + where, ratio(measured.at(name), measured.at("floor")));
  }
}

}  // namespace

void measureRefresh(const Options& options, Report& report) {
  for (const std::size_t count : options.processes) {
    const std::string at = "@" + std::to_string(count);
    report.section("CPU per refresh (ms), and its ratios, at " + std::to_string(count));
    try {
      const Population population(planPopulation(count, Mix::machine));
      measureAt(at, options, report);
    } catch (const std::runtime_error& error) {
      report.missing("everything" + at, error.what());
    }
    if (!options.wants("refresh")) continue;
    try {
      measureAwakeAt(count, at, options.rounds, report);
    } catch (const std::runtime_error& error) {
      report.missing("a quarter awake" + at, error.what());
    }
  }
}

}  // namespace bench
