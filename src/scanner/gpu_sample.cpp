#include "scanner/gpu_sample.h"

#include <algorithm>
#include <map>
#include <optional>
#include <string>
#include <utility>

#include "platform/gpus.h"
#include "scanner/memory_units.h"

namespace GpuSampling {
namespace {

/// One card needs no more than its name; of several that are alike the place tells which.
std::string nameOf(const platform::GpuDevice& device, std::size_t devices) {
  if (device.name.empty()) return devices == 1 ? std::string() : device.id;
  return devices == 1 ? device.name : device.name + " (" + device.id + ")";
}

std::vector<GpuCard> cardsOf(const platform::GpuReading& reading) {
  std::vector<GpuCard> cards;
  for (const platform::GpuDevice& device : reading.devices) {
    if (!device.capacity) continue;
    cards.push_back({nameOf(device, reading.devices.size()),
                     static_cast<double>(device.capacity->usedBytes) / kBytesPerGB,
                     static_cast<double>(device.capacity->totalBytes) / kBytesPerGB});
  }
  return cards;
}

/// What the process holds of the cards' memory; none when that is nothing, or when the reading is
/// older than the process and so about an earlier one with the same pid.
std::optional<GpuMemory> memoryOf(const VordaProcess& process,
                                  const platform::GpuReading& reading) {
  GpuMemory memory;
  auto use = std::ranges::lower_bound(reading.uses, process.pid, {}, &platform::GpuUse::pid);
  for (; use != reading.uses.end() && use->pid == process.pid; ++use) {
    if (process.startTime && *process.startTime > use->askedAt) continue;
    const double memMB = static_cast<double>(use->bytes) / kBytesPerMB;
    memory.memMB += memMB;
    memory.shares.push_back({nameOf(reading.devices[use->device], reading.devices.size()), memMB});
  }
  if (memory.shares.empty()) return std::nullopt;
  return memory;
}

bool holdsMore(const VordaProcess* a, const VordaProcess* b) {
  return a->gpuMemory->memMB > b->gpuMemory->memMB;
}

void moveSmall(std::vector<VordaProcess>& scanned, double minMemMB,
               std::vector<VordaProcess>& small) {
  auto end = scanned.begin();
  for (VordaProcess& process : scanned) {
    if (process.labRole == LabRole::none && process.memMB < minMemMB) {
      small.push_back(std::move(process));
    } else {
      if (&*end != &process) *end = std::move(process);
      ++end;
    }
  }
  scanned.erase(end, scanned.end());
}

}  // namespace

bool isOfInterest(const VordaProcess& process) {
  if (!process.gpuMemory) return false;
  if (process.labRole != LabRole::none) return true;
  return !process.isProtected && process.gpuMemory->memMB >= kMinMemMB;
}

std::vector<std::int32_t> holders(bool isWatched) {
  std::map<std::int32_t, double> sums;
  for (const auto& use : platform::readGpus({.isWatched = isWatched}).uses) {
    sums[use.pid] += static_cast<double>(use.bytes) / kBytesPerMB;
  }
  std::vector<std::int32_t> pids;
  for (const auto& [pid, memMB] : sums) {
    if (memMB >= kMinMemMB) pids.push_back(pid);
  }
  return pids;
}

GpuSample take(std::vector<VordaProcess>& scanned, double minMemMB, bool isWatched,
               std::span<const std::int32_t> shown) {
  const platform::GpuReading reading = platform::readGpus({.isWatched = isWatched, .pids = shown});
  std::vector<const VordaProcess*> largest;
  for (VordaProcess& process : scanned) {
    process.gpuMemory = memoryOf(process, reading);
    if (isOfInterest(process)) largest.push_back(&process);
  }
  std::ranges::stable_sort(largest, holdsMore);
  largest.resize(std::min(largest.size(), kMost));

  GpuSample sample{.cards = cardsOf(reading)};
  for (const VordaProcess* process : largest) sample.processes.push_back(*process);
  moveSmall(scanned, minMemMB, sample.unlisted);
  return sample;
}

}  // namespace GpuSampling
