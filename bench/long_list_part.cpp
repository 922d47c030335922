#include <algorithm>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "cpu_clock.h"
#include "frontends/terminal/menu_geometry.h"
#include "frontends/terminal/menu_painter.h"
#include "frontends/terminal/menu_view.h"
#include "parts.h"
#include "population_plan.h"
#include "ui/menu_construction.h"

namespace bench {
namespace {

constexpr std::size_t kMany = 5000;
constexpr terminal::Size kScreen{200, 50};
constexpr std::string_view kWords = "train_4999";  // what one row has, and few have parts of

std::vector<VordaProcess> trainings() {
  std::vector<VordaProcess> processes;
  for (const IdleProcess& planned : planPopulation(kMany, Mix::machine)) {
    const auto pid = static_cast<std::int32_t>(processes.size() + 1);
    VordaProcess process{.pid = pid,
                         .displayName = "Training: run " + std::to_string(pid),
                         .product = "Training",
                         .memMB = 100.0 + (pid * 7919) % 5000,
                         .commandLine = "python train_" + std::to_string(pid) + ".py",
                         .labRole = LabRole::training,
                         .ownerName = "ada",
                         .identity = 1};
    for (const std::string& argument : planned.arguments) process.commandLine += ' ' + argument;
    processes.push_back(std::move(process));
  }
  return processes;
}

/// What a terminal does with one key.
struct Terminal {
  terminal::MenuView view;
  terminal::Look look;

  void draw() {
    terminal::CellGrid grid(kScreen);
    paintMenu(grid, view, menuGeometry(kScreen, view, look), "Vorda", look);
  }
  void type(char32_t letter) {
    view.handle({.kind = terminal::Input::Kind::character, .character = letter},
                menuGeometry(kScreen, view, look));
    draw();
  }
};

}  // namespace

void measureLongList(const Options& options, Report& report) {
  const std::size_t rows = 2 * kMany;  // each is in two sections
  report.section("A list of " + std::to_string(rows) + " rows in the terminal");
  const std::vector<VordaProcess> processes = trainings();
  const std::vector<VordaLaunchAgent> launchAgents;
  const MenuArrangement whole{.isWhole = true};
  std::vector<double> openings;
  std::vector<double> letters;
  for (int round = 0; round < options.rounds; ++round) {
    Terminal terminal;
    terminal.type(U'/');
    openings.push_back(1000 * cpuSecondsOfWork([&] {
                         MenuContent content{processes, launchAgents, {}};
                         content.arrangement = &whole;
                         terminal.view.rebuilt(
                             std::make_shared<const Menu>(MenuConstruction::build(content)),
                             menuGeometry(kScreen, terminal.view, terminal.look).list.height);
                         terminal.draw();
                       }));
    double dearest = 0;
    for (const char letter : kWords) {
      dearest = std::max(dearest,
                         cpuSecondsOfWork([&] { terminal.type(static_cast<char32_t>(letter)); }));
    }
    letters.push_back(1000 * dearest);
  }
  report.figure("list", "filter of 10,000 rows: showing all (ms)", spread(openings));
  report.figure("list", "filter of 10,000 rows: the dearest letter (ms)", spread(letters));
}

}  // namespace bench
