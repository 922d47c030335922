#include "ui/strip_segments.h"

#include <algorithm>

#include "scanner/memory_units.h"
#include "ui/pressure_level.h"
#include "ui/process_color.h"

namespace {

constexpr double kLeastTotalGB = 0.1;
constexpr double kLeastFraction = 0.002;

void addSegment(std::vector<Segment>& segments, const VordaProcess& process, double memMB,
                double totalGB) {
  const double fraction = memMB / (totalGB * kMBPerGB);
  if (fraction <= kLeastFraction) return;
  segments.push_back(
      {fraction, ProcessColor::color(process), process.displayName, process.pid, memMB});
}

}  // namespace

bool applyPressureStrip(MemoryPressureView& strip, const SystemMemory::Snapshot& sys,
                        const ProcessList& top) {
  if (sys.totalGB <= kLeastTotalGB) return false;
  strip.segments.clear();
  for (const VordaProcess* process : top) {
    addSegment(strip.segments, *process, process->memMB, sys.totalGB);
  }
  applyPressure(strip, sys);
  return true;
}

bool applyPressure(MemoryPressureView& strip, const SystemMemory::Snapshot& sys) {
  if (sys.totalGB <= kLeastTotalGB) return false;
  const double before = strip.pressure;
  strip.pressure = std::clamp(sys.usedGB / sys.totalGB, 0.0, 1.0);
  return percentUsed(before) != percentUsed(strip.pressure) ||
         pressureLevel(before) != pressureLevel(strip.pressure);
}

std::optional<GpuTrack> gpuTrack(const GpuSample& gpus, std::size_t most) {
  double usedGB = 0;
  double totalGB = 0;
  for (const GpuCard& card : gpus.cards) {
    usedGB += card.usedGB;
    totalGB += card.totalGB;
  }
  if (totalGB <= kLeastTotalGB) return std::nullopt;
  GpuTrack track;
  for (std::size_t i = 0; i < std::min(most, gpus.processes.size()); ++i) {
    const VordaProcess& process = gpus.processes[i];
    addSegment(track.segments, process, process.gpuMemory->memMB, totalGB);
  }
  track.pressure = std::clamp(usedGB / totalGB, 0.0, 1.0);
  return track;
}
