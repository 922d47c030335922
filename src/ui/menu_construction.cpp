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

const std::vector<VordaProcess> MenuContent::kNoProcesses;

namespace MenuConstruction {
namespace {

using MenuBuilders::command;
using MenuBuilders::label;
using MenuBuilders::named;
using MenuBuilders::separator;
using Items = std::vector<MenuItem>;

constexpr double kGBPerMB = 0.0009765625;

MenuItem stripItem(const MenuContent& content, const ProcessList& bySize) {
  auto strip = std::make_shared<MemoryPressureView>();
  applyPressureStrip(*strip, content.sys, ProcessLists::first(bySize, kMaxStripSegments));
  if (content.gpus != nullptr) strip->gpu = gpuTrack(*content.gpus, kMaxStripSegments);
  return {.kind = MenuItem::Kind::strip, .enabled = false, .strip = std::move(strip)};
}

std::string roleSummary(const std::string& title, const ProcessList& list) {
  if (list.empty()) return title + "  none";
  return title +
         text::format("  %zu  ·  %.1f GB", list.size(), ProcessLists::totalMB(list) * kGBPerMB);
}

std::string usage(const std::string& what, double usedGB, double totalGB) {
  return what + text::format("  %4.1f / %.0f GB used", usedGB, totalGB);
}

/// A line for each card, and for more than there is room for their sum.
void addGpuLines(Items& items, const std::vector<GpuCard>& cards) {
  GpuCard sum;
  for (std::size_t i = 0; i < cards.size(); ++i) {
    sum.usedGB += cards[i].usedGB;
    sum.totalGB += cards[i].totalGB;
    if (i >= kMaxGpuLines) continue;
    items.push_back(label(usage("GPU", cards[i].usedGB, cards[i].totalGB)));
    items.back().toolTip = text::displayName(cards[i].name);
  }
  if (cards.size() <= kMaxGpuLines) return;
  items.push_back(
      label(usage("All " + std::to_string(cards.size()) + " GPUs", sum.usedGB, sum.totalGB)));
}

MenuItem largestLine(const char* beginning, double memMB, const VordaProcess& largest) {
  MenuItem item = named(beginning + MemoryFormat::compact(memMB) + "  ",
                        text::shortened(text::displayName(largest.displayName), 34, 32), {});
  item.enabled = false;
  return item;
}

void addSummary(Items& items, const MenuContent& content, const ProcessList& bySize,
                const ProcessList& training, const ProcessList& servers) {
  constexpr double kLeastLargestMB = 100;
  items.push_back(label(usage("System", content.sys.usedGB, content.sys.totalGB)));
  if (content.gpus != nullptr) addGpuLines(items, content.gpus->cards);
  if (!bySize.empty() && bySize.front()->memMB >= kLeastLargestMB) {
    items.push_back(largestLine(kLargestSummary, bySize.front()->memMB, *bySize.front()));
  }
  if (content.gpus != nullptr && !content.gpus->processes.empty()) {
    const VordaProcess& largest = content.gpus->processes.front();
    items.push_back(largestLine(kLargestOnGpuSummary, largest.gpuMemory->memMB, largest));
  }
  items.push_back(label(roleSummary(kTrainingSummary, training)));
  items.push_back(label(roleSummary(kServersSummary, servers)));
}

/// Makes the rows of processes.
class Rows {
 public:
  explicit Rows(const MenuContent& content)
      : quits_(content.quits),
        families_(content.processes, content.unlistedMembers),
        familyItems_(families_, [this](const auto& process, const auto* entries) {
          return make(process, entries);
        }) {}
  Rows(const Rows&) = delete;
  Rows& operator=(const Rows&) = delete;

  MenuItem of(const VordaProcess& process) { return make(process, familyItems_.of(process)); }

 private:
  MenuItem make(const VordaProcess& process, const FamilyEntries* family) const {
    const ProcessReference reference{process.pid, process.identity};
    if (quits_ == nullptr) return processItem(process, {}, family);
    return processItem(process, quits_->linesOf(reference), family);
  }

  const QuitRequests* quits_;
  FamilyViews families_;
  FamilyItems familyItems_;
};

void addProcessItems(Items& items, const ProcessList& list, Rows& rows) {
  for (const VordaProcess* process : list) items.push_back(rows.of(*process));
}

void addTopSection(Items& items, const ProcessList& bySize, Rows& rows) {
  items.push_back(separator());
  items.push_back(label(kTopHeader));
  if (bySize.empty()) items.push_back(label("  (nothing above threshold)"));
  addProcessItems(items, ProcessLists::first(bySize, kMaxTopRAM), rows);
}

void addSection(Items& items, const char* header, const ProcessList& list, Rows& rows) {
  if (list.empty()) return;
  items.push_back(separator());
  items.push_back(label(header));
  addProcessItems(items, list, rows);
}

void addRoleSection(Items& items, const char* header, const ProcessList& list, Rows& rows) {
  addSection(items, header, ProcessLists::first(list, kMaxAI), rows);
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

std::vector<std::int32_t> shownPids(const std::vector<VordaProcess>& processes) {
  const ProcessList bySize = ProcessLists::byMemory(processes);
  std::vector<std::int32_t> pids;
  const auto add = [&pids](const ProcessList& list) {
    for (const VordaProcess* process : list) pids.push_back(process->pid);
  };
  add(ProcessLists::first(bySize, kMaxTopRAM));
  for (const LabRole role : {LabRole::training, LabRole::inference, LabRole::agent}) {
    add(ProcessLists::first(ProcessLists::ofRole(bySize, role), kMaxAI));
  }
  std::sort(pids.begin(), pids.end());
  pids.erase(std::unique(pids.begin(), pids.end()), pids.end());
  return pids;
}

Menu build(const MenuContent& content) {
  const ProcessList bySize = ProcessLists::byMemory(content.processes);
  const ProcessList training = ProcessLists::ofRole(bySize, LabRole::training);
  const ProcessList servers = ProcessLists::ofRole(bySize, LabRole::inference);
  const ProcessList agentProcesses = ProcessLists::ofRole(bySize, LabRole::agent);

  Menu menu;
  Items& items = menu.items;
  Rows rows(content);
  items.push_back(stripItem(content, bySize));
  addSummary(items, content, bySize, training, servers);
  addTopSection(items, bySize, rows);
  if (content.gpus != nullptr) {
    addSection(items, kTopGpuHeader, ProcessLists::all(content.gpus->processes), rows);
  }
  addRoleSection(items, kTrainingHeader, training, rows);
  addRoleSection(items, kServersHeader, servers, rows);
  addRoleSection(items, kToolsHeader, agentProcesses, rows);
  addLaunchAgentSection(items, content.launchAgents, content.launchAgentOperations);
  addCommands(items);
  return menu;
}

}  // namespace MenuConstruction
