#include "ui/menu_construction.h"

#include <algorithm>
#include <iterator>
#include <string>
#include <utility>

#include "platform/words.h"
#include "scanner/memory_format.h"
#include "text/display_line.h"
#include "text/format.h"
#include "text/unicode.h"
#include "ui/menu_builders.h"
#include "ui/process_lists.h"
#include "ui/strip_segments.h"

namespace MenuConstruction {
namespace {

using MenuBuilders::command;
using MenuBuilders::label;
using MenuBuilders::named;
using MenuBuilders::separator;
using Items = std::vector<MenuItem>;

constexpr double kGBPerMB = 0.0009765625;

MenuItem stripItem(const SystemMemory::Snapshot& sys, const ProcessList& bySize) {
  auto strip = std::make_shared<MemoryPressureView>();
  applyPressureStrip(*strip, sys, ProcessLists::first(bySize, kMaxStripSegments));
  return {.kind = MenuItem::Kind::strip, .enabled = false, .strip = std::move(strip)};
}

std::string roleSummary(const std::string& title, const ProcessList& list) {
  if (list.empty()) return title + "  none";
  return title +
         text::format("  %zu  ·  %.1f GB", list.size(), ProcessLists::totalMB(list) * kGBPerMB);
}

void addSummary(Items& items, const SystemMemory::Snapshot& sys, const ProcessList& bySize,
                const ProcessList& training, const ProcessList& servers) {
  constexpr double kLeastLargestMB = 100;
  items.push_back(label(text::format("System  %4.1f / %.0f GB used", sys.usedGB, sys.totalGB)));
  if (!bySize.empty() && bySize.front()->memMB >= kLeastLargestMB) {
    const VordaProcess& largest = *bySize.front();
    items.push_back(named(kLargestSummary + MemoryFormat::compact(largest.memMB) + "  ",
                          text::shortened(text::displayName(largest.displayName), 34, 32), {}));
    items.back().enabled = false;
  }
  items.push_back(label(roleSummary(kTrainingSummary, training)));
  items.push_back(label(roleSummary(kServersSummary, servers)));
}

void addProcessItems(Items& items, const ProcessList& list, const QuitRequests* quits) {
  for (const VordaProcess* process : list) {
    const ProcessReference reference{process->pid, process->identity};
    items.push_back(quits == nullptr ? processItem(*process)
                                     : processItem(*process, quits->linesOf(reference)));
  }
}

void addTopSection(Items& items, const ProcessList& bySize, const QuitRequests* quits) {
  items.push_back(separator());
  items.push_back(label(kTopHeader));
  if (bySize.empty()) items.push_back(label("  (nothing above threshold)"));
  addProcessItems(items, ProcessLists::first(bySize, kMaxTopRAM), quits);
}

void addRoleSection(Items& items, const char* header, const ProcessList& list,
                    const QuitRequests* quits) {
  if (list.empty()) return;
  items.push_back(separator());
  items.push_back(label(header));
  addProcessItems(items, ProcessLists::first(list, kMaxAI), quits);
}

std::optional<LaunchAgentOperation::Kind> operationOf(
    const std::string& label, std::span<const LaunchAgentOperation> operations) {
  for (const LaunchAgentOperation& operation : operations) {
    if (operation.label() == label && !operation.outcome()) return operation.kind();
  }
  return std::nullopt;
}

void addLaunchAgentSection(Items& items, const std::vector<VordaLaunchAgent>& launchAgents,
                           std::span<const LaunchAgentOperation> operations) {
  Items rows;
  for (const VordaLaunchAgent& launchAgent : launchAgents) {
    if (rows.size() == kMaxLaunchAgents) break;
    const auto underWay = operationOf(launchAgent.label, operations);
    if (launchAgent.loaded || launchAgent.keepAlive || underWay)
      rows.push_back(launchAgentItem(launchAgent, underWay));
  }
  if (rows.empty()) return;
  items.push_back(separator());
  items.push_back(label(kLaunchAgentsHeader));
  std::ranges::move(rows, std::back_inserter(items));
}

void addCommands(Items& items) {
  items.push_back(separator());
  items.push_back(command("Refresh now", Action::refreshNow));
  items.push_back(command("Open " + std::string(platform::words().systemMonitor), Action::openAM));
  items.push_back(command("About Vorda", Action::about));
  items.push_back(label("Developed by Halvek"));
  items.push_back(separator());
  items.push_back(command("Quit Vorda", Action::quitApp));
}

}  // namespace

Menu build(const MenuContent& content) {
  const ProcessList bySize = ProcessLists::byMemory(content.processes);
  const ProcessList training = ProcessLists::ofRole(bySize, LabRole::training);
  const ProcessList servers = ProcessLists::ofRole(bySize, LabRole::inference);
  const ProcessList agentProcesses = ProcessLists::ofRole(bySize, LabRole::agent);

  Menu menu;
  Items& items = menu.items;
  items.push_back(stripItem(content.sys, bySize));
  addSummary(items, content.sys, bySize, training, servers);
  addTopSection(items, bySize, content.quits);
  addRoleSection(items, kTrainingHeader, training, content.quits);
  addRoleSection(items, kServersHeader, servers, content.quits);
  addRoleSection(items, kToolsHeader, agentProcesses, content.quits);
  addLaunchAgentSection(items, content.launchAgents, content.launchAgentOperations);
  addCommands(items);
  return menu;
}

}  // namespace MenuConstruction
