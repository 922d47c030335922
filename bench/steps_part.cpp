#include <benchmark/benchmark.h>

#include <algorithm>
#include <map>
#include <random>
#include <string>

#include "parts.h"
#include "population_plan.h"
#include "scanner/credentials/credential_mask.h"
#include "scanner/naming/friendly_naming.h"
#include "scanner/process_scanner.h"
#include "scanner/repeated_scan.h"
#include "scanner/roles/role_by_words.h"
#include "scanner/roles/searched_line.h"
#include "scanner/scan_order.h"
#include "text/path.h"
#include "text/unicode.h"
#include "tools/allocation_counter.h"
#include "ui/menu_construction.h"

namespace bench {
namespace {

using namespace ProcessScanner;

constexpr std::size_t kStepProcesses = 2000;

/// The population's texts, as a scan would get them, without a system behind them.
struct Sample {
  std::string name;
  std::string commandLine;
  std::vector<std::string> arguments;
  std::vector<std::string_view> views;
};

std::vector<Sample> makeSamples() {
  std::vector<Sample> samples;
  for (auto& process : planPopulation(kStepProcesses, Mix::machine)) {
    Sample sample{.name = process.executable, .arguments = std::move(process.arguments)};
    for (const auto& argument : sample.arguments) {
      if (!sample.commandLine.empty()) sample.commandLine += ' ';
      sample.commandLine += argument;
    }
    samples.push_back(std::move(sample));
  }
  for (auto& sample : samples)
    sample.views.assign(sample.arguments.begin(), sample.arguments.end());
  return samples;
}

const std::vector<Sample>& samples() {
  static const std::vector<Sample> made = makeSamples();
  return made;
}

/// What a scan would keep of them.
std::vector<VordaProcess> makeKept() {
  std::vector<VordaProcess> kept;
  SearchedLine line;
  std::int32_t pid = 0;
  for (const auto& sample : samples()) {
    line.read(sample.views, sample.commandLine);
    const LabRole role = roleOf(text::lastPathComponent(sample.name), line);
    if (role == LabRole::none) continue;
    FriendlyName name = nameOf(line, sample.name);
    kept.push_back({.pid = ++pid,
                    .displayName = std::move(name.displayName),
                    .product = std::move(name.product),
                    .memMB = 100.0 + (pid * 7919) % 5000,
                    .commandLine = redactSecrets(sample.commandLine),
                    .labRole = role,
                    .ownerName = "ada"});
  }
  std::shuffle(kept.begin(), kept.end(), std::mt19937(1));
  return kept;
}

const std::vector<VordaProcess>& kept() {
  static const std::vector<VordaProcess> made = makeKept();
  return made;
}

/// Notes what one run took, by process: `processes` is how many it looked at.
class Tally {
 public:
  Tally(benchmark::State& state, std::size_t processes)
      : state_(state), processes_(static_cast<double>(processes)) {}
  ~Tally() {
    const auto made = static_cast<double>(allocationCount() - before_);
    const double all = static_cast<double>(state_.iterations()) * processes_;
    state_.counters["processes"] = processes_;
    state_.counters["allocations"] = all > 0 ? made / all : 0;
  }
  Tally(const Tally&) = delete;
  Tally& operator=(const Tally&) = delete;

  /// What was asked for while timing was paused belongs to the step as little as its time.
  void leaveOut(std::uint64_t allocations) { before_ += allocations; }

 private:
  benchmark::State& state_;
  double processes_;
  std::uint64_t before_ = allocationCount();
};

void classify(benchmark::State& state) {
  SearchedLine line;
  std::string exe;
  const auto classifyAll = [&] {
    for (const auto& sample : samples()) {
      line.read(sample.views, sample.commandLine);
      exe.clear();
      text::appendLowered(text::lastPathComponent(sample.name), exe);
      benchmark::DoNotOptimize(roleOf(exe, line));
    }
  };
  classifyAll();  // the buffers get their size
  const Tally tally(state, samples().size());
  while (state.KeepRunning()) classifyAll();
}

void name(benchmark::State& state) {
  SearchedLine line;
  const Tally tally(state, samples().size());
  while (state.KeepRunning()) {
    for (const auto& sample : samples()) {
      line.read(sample.views, sample.commandLine);
      benchmark::DoNotOptimize(nameOf(line, sample.name));
    }
  }
}

void redact(benchmark::State& state) {
  const Tally tally(state, samples().size());
  while (state.KeepRunning()) {
    for (const auto& sample : samples()) {
      benchmark::DoNotOptimize(redactSecrets(sample.commandLine));
    }
  }
}

void mask(benchmark::State& state) {
  const Tally tally(state, samples().size());
  while (state.KeepRunning()) {
    for (const auto& sample : samples()) {
      benchmark::DoNotOptimize(CredentialMask::shown(sample.views, sample.commandLine));
    }
  }
}

void sort(benchmark::State& state) {
  Tally tally(state, kept().size());
  while (state.KeepRunning()) {
    state.PauseTiming();
    const std::uint64_t before = allocationCount();
    auto processes = kept();
    tally.leaveOut(allocationCount() - before);
    state.ResumeTiming();
    sortByRoleAndMemory(processes);
  }
}

void buildMenu(benchmark::State& state) {
  const std::vector<VordaLaunchAgent> launchAgents;
  const Tally tally(state, kept().size());
  while (state.KeepRunning()) {
    benchmark::DoNotOptimize(MenuConstruction::build({kept(), launchAgents, {}}));
  }
}

/// Passes the runs on to the report.
class Reporter : public benchmark::BenchmarkReporter {
 public:
  bool ReportContext(const Context&) override { return true; }

  void ReportRuns(const std::vector<Run>& runs) override {
    for (const auto& run : runs) {
      if (run.run_type != Run::RT_Iteration) continue;
      const double processes = run.counters.at("processes");
      nanoseconds_[run.run_name.function_name].push_back(run.GetAdjustedCPUTime() / processes);
      allocations_[run.run_name.function_name] = run.counters.at("allocations");
    }
  }

  void tell(Report& report) const {
    for (const auto& [step, costs] : nanoseconds_) {
      report.figure("steps", step + ", ns per process", spread(costs));
      report.figure("steps", step + ", allocations per process", allocations_.at(step));
    }
  }

 private:
  std::map<std::string, std::vector<double>> nanoseconds_;
  std::map<std::string, double> allocations_;
};

}  // namespace

void measureSteps(const Options& options, Report& report) {
  report.section("Steps alone");
  const std::pair<const char*, void (*)(benchmark::State&)> steps[] = {
      {"classify", classify}, {"name", name}, {"redact", redact},
      {"mask", mask},         {"sort", sort}, {"build menu", buildMenu}};
  for (const auto& [step, run] : steps) {
    benchmark::RegisterBenchmark(step, run)->MinTime(0.02)->Repetitions(options.rounds);
  }
  Reporter reporter;
  benchmark::RunSpecifiedBenchmarks(&reporter);
  reporter.tell(report);
}

}  // namespace bench
