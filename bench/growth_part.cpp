#include <algorithm>
#include <cmath>
#include <functional>
#include <limits>
#include <stdexcept>
#include <string>

#include "cpu_clock.h"
#include "floor.h"
#include "parts.h"
#include "population.h"
#include "rounds.h"
#include "scanner/process_scanner.h"
#include "tools/allocation_counter.h"

namespace bench {
namespace {

constexpr double kNoneKept = 1e12;  // MiB

struct Cost {
  double scanSeconds;
  double floorSeconds;
};

Cost cost(int rounds) {
  Floor floor;
  const Measurements measured = alternate(
      {{"floor", [&floor] { return cpuSecondsOfWork([&floor] { floor.read(); }); }},
       {"scan", [] { return cpuSecondsOfWork([] { ProcessScanner::scan(kNoneKept); }); }}},
      rounds);
  return {spread(measured.at("scan")).median, spread(measured.at("floor")).median};
}

/// The fewest of a few scans: other processes, which may be kept, come and go.
double allocationsOfScan() {
  double fewest = std::numeric_limits<double>::max();
  for (int i = 0; i < 5; ++i) {
    const auto before = allocationCount();
    ProcessScanner::scan(kNoneKept);
    fewest = std::min(fewest, static_cast<double>(allocationCount() - before));
  }
  return fewest;
}

/// Measures beside these processes; says so when they can't be started.
void beside(const std::vector<IdleProcess>& plan, const std::string& what, Report& report,
            const std::function<void()>& measure) {
  try {
    const Population population(plan);
    measure();
  } catch (const std::runtime_error& error) {
    report.missing(what, error.what());
  }
}

void tell(const std::string& what, const std::vector<Point>& points, double unit, Report& report) {
  if (points.size() < 2) return report.missing(what, "there are too few points for a line");
  const Line line = fit(points);
  report.figure("growth", what, line.slope * unit);
  report.figure("growth", what + ", largest distance from the line", line.residual);
}

void byProcesses(const Options& options, Report& report) {
  std::vector<Point> scans;
  std::vector<Point> floors;
  std::vector<Point> allocations;
  Floor floor;
  for (const std::size_t count : {100U, 300U, 1000U, 3000U, 10000U}) {
    auto plan = planPopulation(count, Mix::ordinary);
    for (auto& process : plan) {
      process.memoryKiB = 64;
      process.threads = 1;
    }
    const std::string what = "scan of " + std::to_string(count) + " processes (ms)";
    beside(plan, what, report, [&] {
      const auto processes = static_cast<double>(floor.read());
      const Cost cost = bench::cost(options.rounds);
      report.figure("growth", what, cost.scanSeconds * 1e3);
      scans.push_back({processes, cost.scanSeconds});
      floors.push_back({processes, cost.floorSeconds});
      allocations.push_back({processes, allocationsOfScan()});
    });
  }
  tell("scan, us per process", scans, 1e6, report);
  tell("floor, us per process", floors, 1e6, report);
  if (allocations.size() < 2) return;
  const double perProcess = (allocations.back().y - allocations.front().y) /
                            (allocations.back().x - allocations.front().x);
  report.figure("growth", "allocations per process not kept", std::round(perProcess * 100) / 100);
}

void byLength(const Options& options, Report& report) {
  constexpr std::size_t kProcesses = 20;
  std::vector<Point> scans;
  std::vector<Point> floors;
  for (const std::size_t length : {200U, 2000U, 20000U, 200000U, 2000000U}) {
    const std::string what =
        "scan with 20 command lines of " + std::to_string(length) + " bytes (ms)";
    beside(planCommandLines(kProcesses, length), what, report, [&] {
      const Cost cost = bench::cost(options.rounds);
      report.figure("growth", what, cost.scanSeconds * 1e3);
      const auto bytes = static_cast<double>(kProcesses * length);
      scans.push_back({bytes, cost.scanSeconds});
      floors.push_back({bytes, cost.floorSeconds});
    });
  }
  tell("scan, ns per byte of command line", scans, 1e9, report);
  tell("floor, ns per byte of command line", floors, 1e9, report);
}

}  // namespace

void measureGrowth(const Options& options, Report& report) {
  report.section("Growth");
  byProcesses(options, report);
  byLength(options, report);
}

}  // namespace bench
