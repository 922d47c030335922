#include "ui/summary_lines.h"

#include <string>

#include "scanner/memory_format.h"
#include "text/display_line.h"
#include "text/format.h"
#include "ui/menu_builders.h"
#include "ui/menu_limits.h"
#include "ui/menu_sections.h"
#include "ui/name_limits.h"
#include "ui/status_tool_tip.h"

namespace MenuConstruction {
namespace {

using MenuBuilders::label;
using MenuBuilders::named;
using Items = std::vector<MenuItem>;

double totalMB(const ProcessList& list) {
  double sum = 0;
  for (const VordaProcess* process : list) sum += process->memMB;
  return sum;
}

constexpr double kGBPerMB = 0.0009765625;

std::string roleSummary(const std::string& title, const ProcessList& list) {
  if (list.empty()) return title + "  none";
  return title + text::format("  %zu  ·  %.1f GB", list.size(), totalMB(list) * kGBPerMB);
}

std::string usage(const std::string& what, double usedGB, double totalGB) {
  return what + text::format("  %4.1f / %.0f GB used", usedGB, totalGB);
}

/// A limit may be small, and no whole number.
MenuItem systemLine(const SystemMemory::Snapshot& sys) {
  constexpr double kLeastRounded = 10;
  const bool isRounded = !sys.isLimit || sys.totalGB >= kLeastRounded;
  MenuItem item =
      label(isRounded ? usage("System", sys.usedGB, sys.totalGB)
                      : "System" + text::format("  %4.1f / %.1f GB used", sys.usedGB, sys.totalGB));
  item.toolTip = StatusToolTip::memoryLines(sys);
  return item;
}

/// A line for each card, and for more than there is room for their sum.
void addGpuLines(Items& items, const std::vector<GpuCard>& cards) {
  GpuCard sum;
  for (std::size_t i = 0; i < cards.size(); ++i) {
    sum.usedGB += cards[i].usedGB;
    sum.totalGB += cards[i].totalGB;
    if (i >= MenuLimits::kMaxGpuLines) continue;
    items.push_back(label(usage("GPU", cards[i].usedGB, cards[i].totalGB)));
    items.back().toolTip = text::displayName(cards[i].name);
  }
  if (cards.size() <= MenuLimits::kMaxGpuLines) return;
  items.push_back(
      label(usage("All " + std::to_string(cards.size()) + " GPUs", sum.usedGB, sum.totalGB)));
}

MenuItem largestLine(const char* beginning, double memMB, const VordaProcess& largest) {
  MenuItem item =
      named(beginning + MemoryFormat::compact(memMB) + "  ",
            NameLimits::cut(text::displayName(largest.displayName), NameLimits::kLargestName), {});
  item.enabled = false;
  return item;
}

}  // namespace

void addSummary(Items& items, const MenuContent& content, const ProcessList& bySize,
                const ProcessList& training, const ProcessList& servers) {
  constexpr double kLeastLargestMB = 100;
  items.push_back(systemLine(content.sys));
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

}  // namespace MenuConstruction
