#include "ui/menu_construction.h"

#include <algorithm>
#include <iterator>
#include <set>
#include <string>
#include <utility>

#include "launch_agents/launch_agent_choice.h"
#include "platform/words.h"
#include "ui/menu_builders.h"
#include "ui/menu_limits.h"
#include "ui/menu_sections.h"
#include "ui/row_order.h"
#include "ui/strip_segments.h"
#include "ui/summary_lines.h"

const std::vector<VordaProcess> MenuContent::kNoProcesses;

namespace MenuConstruction {
namespace {

using MenuBuilders::command;
using MenuBuilders::label;
using MenuBuilders::separator;
using Items = std::vector<MenuItem>;

ProcessList largestFirst(const std::vector<VordaProcess>& sample) {
  return largestOf(sample, sample.size());
}

ProcessList ofRole(const ProcessList& list, LabRole role) {
  ProcessList chosen;
  std::ranges::copy_if(list, std::back_inserter(chosen),
                       [role](const auto* process) { return process->labRole == role; });
  return chosen;
}

ProcessList first(const ProcessList& list, std::size_t limit) {
  const auto count = static_cast<std::ptrdiff_t>(std::min(list.size(), limit));
  return {list.begin(), list.begin() + count};
}

MenuItem stripItem(const MenuContent& content, const ProcessList& bySize) {
  auto strip = std::make_shared<MemoryPressureView>();
  applyPressureStrip(*strip, content.sys, first(bySize, MenuLimits::kMaxStripSegments));
  if (content.gpus != nullptr) strip->gpu = gpuTrack(*content.gpus, MenuLimits::kMaxStripSegments);
  return {.kind = MenuItem::Kind::strip, .enabled = false, .strip = std::move(strip)};
}

/// Makes the rows of processes.
class Rows {
 public:
  explicit Rows(const MenuContent& content)
      : foldsFamilies_(content.arrangement != nullptr && content.arrangement->foldsFamilies),
        quits_(content.quits),
        families_(content.processes, content.unlistedMembers,
                  content.gpus == nullptr ? MenuContent::kNoProcesses : content.gpus->unlisted),
        familyItems_(families_, [this](const auto& process, const auto* entries) {
          return make(process, entries);
        }) {}
  Rows(const Rows&) = delete;
  Rows& operator=(const Rows&) = delete;

  MenuItem of(const VordaProcess& process) {
    return foldsFamilies_ ? familyItems_.folded(process) : make(process, familyItems_.of(process));
  }

  /// `list`, where the largest come first, in the order of how large their rows are.
  ProcessList largestRowsFirst(ProcessList list) const {
    if (!foldsFamilies_) return list;
    std::ranges::stable_sort(list, [this](const auto* a, const auto* b) {
      return memoryOfRow(*a, &families_) > memoryOfRow(*b, &families_);
    });
    return list;
  }

  /// The first process of each row.
  ProcessList firstOfEach(ProcessList list) const {
    if (!foldsFamilies_) return list;
    std::set<const ShownFamily*> seen;
    std::erase_if(list, [&](const auto* process) {
      const ShownFamily* const family = families_.of(*process);
      return family != nullptr && !seen.insert(family).second;
    });
    return list;
  }

 private:
  MenuItem make(const VordaProcess& process, const FamilyEntries* family) const {
    const ProcessReference reference{process.pid, process.identity};
    if (quits_ == nullptr) return processItem(process, {}, family);
    return processItem(process, quits_->linesOf(reference), family);
  }

  bool foldsFamilies_;
  const UnfinishedQuits* quits_;
  ShownFamilies families_;
  FamilyItems familyItems_;
};

SortBy sortOf(const MenuContent& content) {
  return content.arrangement == nullptr ? SortBy::memory : content.arrangement->sortBy;
}

/// The rows of a section, and what ends it where it is cut.
class SectionRows {
 public:
  /// `headers`: as for limitOf.
  SectionRows(Items& items, const MenuContent& content, Rows* rows,
              std::span<const char* const> headers, std::size_t limit)
      : items_(items),
        content_(content),
        rows_(rows),
        limit_(limitOf(headers, limit, content.arrangement)) {}

  /// `makeRow` makes the row at that place, of `count` that there are.
  template <typename MakeRow>
  void add(std::size_t count, const MakeRow& makeRow) {
    const std::size_t shown = std::min(count, limit_);
    for (std::size_t i = 0; i < shown; ++i) items_.push_back(makeRow(i));
    if (shown == count) return;
    MenuItem more = command("… and " + std::to_string(count - shown) + " more", Action::showMore);
    const std::size_t next = std::min(count, shown + MenuLimits::kMaxMore);
    for (std::size_t i = shown; i < next; ++i) {
      more.submenu.push_back(makeRow(i));
      MenuItem& row = more.submenu.back();
      if (row.process) row.live = std::make_shared<LiveTitle>(LiveTitle{.title = row.title});
    }
    if (next < count) {
      more.submenu.push_back(
          label("… and " + std::to_string(count - next) + " more: run vorda in a terminal"));
    }
    items_.push_back(std::move(more));
  }

  /// The rows of `list`, where the largest rows come first, in the order of the arrangement.
  void addProcesses(ProcessList list) {
    const SortBy sortBy = sortOf(content_);
    if (sortBy != SortBy::memory) {
      std::ranges::stable_sort(
          list, [sortBy](const auto* a, const auto* b) { return comesBefore(*a, *b, sortBy); });
    }
    list = rows_->firstOfEach(std::move(list));
    add(list.size(), [this, &list](std::size_t i) { return rows_->of(*list[i]); });
  }

 private:
  Items& items_;
  const MenuContent& content_;
  Rows* rows_;  ///< of processes
  std::size_t limit_;
};

void addTopSection(Items& items, const MenuContent& content, Rows& rows, const ProcessList& list) {
  items.push_back(separator());
  items.push_back(label(kTopHeaders.at(static_cast<std::size_t>(sortOf(content)))));
  if (list.empty()) items.push_back(label("  (nothing above threshold)"));
  SectionRows(items, content, &rows, kTopHeaders, MenuLimits::kMaxTopRAM).addProcesses(list);
}

void addSection(Items& items, const MenuContent& content, Rows& rows, const char* header,
                const ProcessList& list, std::size_t limit = MenuLimits::kMaxAI) {
  if (list.empty()) return;
  items.push_back(separator());
  items.push_back(label(header));
  SectionRows(items, content, &rows, {&header, 1}, limit).addProcesses(list);
}

std::optional<LaunchAgentOperation::Kind> operationOf(
    const std::string& label, std::span<const LaunchAgentOperation> operations) {
  for (const LaunchAgentOperation& operation : operations) {
    if (operation.label() == label && !operation.outcome()) return operation.kind();
  }
  return std::nullopt;
}

void addLaunchAgentSection(Items& items, const MenuContent& content) {
  struct Row {
    const VordaLaunchAgent* launchAgent;
    std::optional<LaunchAgentOperation::Kind> underWay;
  };
  std::vector<Row> rows;
  for (const VordaLaunchAgent& launchAgent : content.launchAgents) {
    const auto underWay = operationOf(launchAgent.label, content.launchAgentOperations);
    if (LaunchAgentScanner::hasRow(launchAgent, underWay.has_value())) {
      rows.push_back({&launchAgent, underWay});
    }
  }
  if (rows.empty()) return;
  items.push_back(separator());
  items.push_back(label(kLaunchAgentsHeader));
  SectionRows(items, content, nullptr, {&kLaunchAgentsHeader, 1}, MenuLimits::kMaxLaunchAgents)
      .add(rows.size(), [&rows](std::size_t i) {
        return launchAgentItem(*rows[i].launchAgent, rows[i].underWay);
      });
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
  const ProcessList sorted = largestFirst(content.processes);
  const ProcessList training = ofRole(sorted, LabRole::training);
  const ProcessList servers = ofRole(sorted, LabRole::inference);

  Menu menu;
  Items& items = menu.items;
  Rows rows(content);
  items.push_back(stripItem(content, sorted));
  addSummary(items, content, sorted, training, servers);
  const ProcessList inOrder = rows.largestRowsFirst(sorted);
  addTopSection(items, content, rows, inOrder);
  if (content.gpus != nullptr) {
    const ProcessList onGpus = listOf(content.gpus->processes);
    addSection(items, content, rows, kTopGpuHeader, onGpus, onGpus.size());
  }
  for (const auto& [role, header] : kRoleHeaders) {
    addSection(items, content, rows, header, ofRole(inOrder, role));
  }
  addLaunchAgentSection(items, content);
  addCommands(items);
  return menu;
}

}  // namespace MenuConstruction
