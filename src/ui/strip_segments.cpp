#include "ui/strip_segments.h"

#include <algorithm>

#include "ui/process_color.h"

bool applyPressureStrip(MemoryPressureView& strip, const SystemMemory::Snapshot& sys,
                        const ProcessList& top) {
  constexpr double kLeastTotalGB = 0.1;
  constexpr double kLeastFraction = 0.002;
  constexpr double kMBPerGB = 1024;
  if (sys.totalGB <= kLeastTotalGB) return false;

  strip.segments.clear();
  for (const VordaProcess* process : top) {
    const double fraction = process->memMB / (sys.totalGB * kMBPerGB);
    if (fraction <= kLeastFraction) continue;
    strip.segments.push_back({fraction, ProcessColor::color(*process), process->displayName,
                              process->pid, process->memMB});
  }
  strip.pressure = std::clamp(sys.usedGB / sys.totalGB, 0.0, 1.0);
  return true;
}
