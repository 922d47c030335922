#include "ui/status_tool_tip.h"

#include <algorithm>

#include "scanner/memory_format.h"
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
  constexpr double kMBPerGB = 1024;
  if (!sys.isLimit) return {};
  return "Limit of this container: " + MemoryFormat::detail(sys.totalGB * kMBPerGB);
}

}  // namespace StatusToolTip
