#include "scanner/system_memory.h"

#include <algorithm>

#include "platform/memory.h"
#include "scanner/memory_units.h"

namespace SystemMemory {

Snapshot snapshot() {
  const platform::MemoryReading reading = platform::readMemory();
  const auto snapshotOf = [](double totalBytes, const platform::MemoryInUse& inUse) {
    return Snapshot{inUse.usedBytes / kBytesPerGB, totalBytes / kBytesPerGB,
                    inUse.freeBytes / kBytesPerGB};
  };
  const auto inGB = [](std::optional<double> bytes) {
    return bytes ? std::optional(*bytes / kBytesPerGB) : std::nullopt;
  };
  Snapshot snapshot;
  if (reading.limit) {
    snapshot = snapshotOf(reading.limit->totalBytes, reading.limit->inUse);
    snapshot.isLimit = true;
    // Others may have taken what the limit would allow.
    if (const auto onMachine = inGB(reading.availableBytes)) {
      snapshot.availableGB = std::clamp(snapshot.totalGB - snapshot.usedGB, 0.0, *onMachine);
    }
    snapshot.swappedGB = inGB(reading.limit->swappedBytes);
    snapshot.stalls = reading.limit->stalls ? reading.limit->stalls : reading.stalls;
  } else {
    snapshot = snapshotOf(reading.totalBytes, reading.inUse.value_or(platform::MemoryInUse{}));
    snapshot.availableGB = inGB(reading.availableBytes);
    snapshot.swappedGB = inGB(reading.swappedBytes);
    snapshot.stalls = reading.stalls;
  }
  return snapshot;
}

}  // namespace SystemMemory
