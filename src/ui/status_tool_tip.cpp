#include "ui/status_tool_tip.h"

#include <algorithm>

#include "scanner/memory_format.h"
#include "scanner/memory_units.h"
#include "text/display_line.h"
#include "text/format.h"

namespace StatusToolTip {

std::string beforeSample() {
  return "Vorda — color-coded memory pressure\nHalvek";
}

std::string of(const std::vector<VordaProcess>& processes, double refreshInterval,
               const SystemMemory::Snapshot& sys) {
  constexpr double kLeastNamedMB = 512;
  std::string lines;
  const auto largest = std::ranges::max_element(processes, {}, &VordaProcess::memMB);
  if (largest == processes.end() || largest->memMB < kLeastNamedMB) {
    lines = text::format("Vorda — auto-refresh every %.0fs\n", refreshInterval);
  } else {
    lines = "Vorda\nLargest: " + MemoryFormat::detail(largest->memMB) + " — " +
            text::displayName(largest->displayName) + "\n";
  }
  const std::string memory = memoryLines(sys);
  if (!memory.empty()) lines += memory + "\n";
  return lines + "Halvek";
}

std::string memoryLines(const SystemMemory::Snapshot& sys) {
  constexpr double kLeastSwappedMB = 1;
  std::string lines;
  const auto add = [&lines](const std::string& line) {
    lines += (lines.empty() ? "" : "\n") + line;
  };
  if (sys.isLimit) {
    add("Limit of this container: " + MemoryFormat::detail(sys.totalGB * kMBPerGB));
  }
  const double swappedMB = sys.swappedGB.value_or(0) * kMBPerGB;
  if (swappedMB >= kLeastSwappedMB) {
    add("Swap in use: " + MemoryFormat::detail(swappedMB));
  }
  if (sys.stalls && sys.stalls->some >= kLeastStalled) {
    add(text::format("Waiting for memory: some %.0f%%, all %.0f%% of the last 10 s",
                     sys.stalls->some, sys.stalls->full));
  }
  return lines;
}

}  // namespace StatusToolTip
