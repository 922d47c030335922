#include "ui/status_tool_tip.h"

#include <algorithm>

#include "scanner/memory_format.h"
#include "text/display_line.h"
#include "text/format.h"

namespace StatusToolTip {

std::string beforeSample() {
  return "Vorda — color-coded memory pressure\nHalvek";
}

std::string of(const std::vector<VordaProcess>& processes, double refreshInterval) {
  constexpr double kLeastNamedMB = 512;
  const auto largest = std::ranges::max_element(processes, {}, &VordaProcess::memMB);
  if (largest == processes.end() || largest->memMB < kLeastNamedMB) {
    return text::format("Vorda — auto-refresh every %.0fs\nHalvek", refreshInterval);
  }
  return "Vorda\nLargest: " + MemoryFormat::detail(largest->memMB) + " — " +
         text::displayName(largest->displayName) + "\nHalvek";
}

}  // namespace StatusToolTip
