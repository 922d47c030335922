#include <stdexcept>
#include <string>
#include <vector>

#include "cpu_clock.h"
#include "fake_cards.h"
#include "floor.h"
#include "parts.h"
#include "population.h"
#include "refresh_cycle.h"
#include "rounds.h"
#include "scanner/process_scanner.h"

namespace bench {
namespace {

constexpr std::size_t kAiRows = 40;
constexpr double kMinMemMB = 50;  // the program's own threshold

std::vector<std::int32_t> aiWorkloads() {
  std::vector<std::int32_t> pids;
  for (const VordaProcess& process : ProcessScanner::scan(kMinMemMB)) {
    if (process.labRole != LabRole::none) pids.push_back(process.pid);
  }
  return pids;
}

/// Both kinds of refresh together, the one that asks the cards and the one that does not, against
/// twice the floor: the quotient of each round.
Spread refreshByFloor(FakeCards* cards, int rounds) {
  Floor floor;
  RefreshCycle cycle;
  const auto refresh = [&] {
    if (cards != nullptr) cards->nextRefresh();
    cycle.tick();
  };
  const Measurements measured =
      alternate({{"floor", [&] { return cpuSecondsOfWork([&] { floor.read(), floor.read(); }); }},
                 {"refresh", [&] { return cpuSecondsOfWork([&] { refresh(), refresh(); }); }}},
                rounds);
  return ratio(measured.at("refresh"), measured.at("floor"));
}

Spread without(std::size_t count, int rounds) {
  const Population population(planPopulation(count, Mix::ordinary));
  return refreshByFloor(nullptr, rounds);
}

Spread with(std::size_t count, int rounds, Report& report, const std::string& at) {
  const IdleProcess training = planTraining();
  const std::size_t family = static_cast<std::size_t>(training.copies) + 1;
  std::vector<IdleProcess> plan = planPopulation(kAiRows - family, Mix::aiWork);
  plan.push_back(training);
  const std::size_t rest = count > kAiRows ? count - kAiRows : 0;
  for (IdleProcess& process : planPopulation(rest, Mix::ordinary)) {
    plan.push_back(std::move(process));
  }
  const Population population(plan);
  const auto holders = aiWorkloads();
  report.figure("work", "AI workloads listed" + at, static_cast<double>(holders.size()));
  FakeCards cards(holders);
  return refreshByFloor(&cards, rounds);
}

}  // namespace

void measureWork(const Options& options, Report& report) {
  for (const std::size_t count : options.processes) {
    const std::string at = "@" + std::to_string(count);
    report.section("A refresh with 40 AI workloads, a family and 2 cards, at " +
                   std::to_string(count));
    try {
      const Spread plain = without(count, options.rounds);
      const Spread loaded = with(count, options.rounds, report, at);
      report.ratio("refresh without AI work/floor" + at, plain);
      report.ratio("refresh with AI work/floor" + at, loaded);
      report.ratio("refresh with AI work/without" + at,
                   {loaded.median / plain.median, loaded.lowerQuartile / plain.upperQuartile,
                    loaded.upperQuartile / plain.lowerQuartile});
    } catch (const std::runtime_error& error) {
      report.missing("AI work" + at, error.what());
    }
  }
}

}  // namespace bench
