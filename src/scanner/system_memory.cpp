#include "scanner/system_memory.h"

#include "platform/memory.h"

namespace SystemMemory {

Snapshot snapshot() {
  constexpr double kBytesPerGB = 1073741824;
  const platform::MemoryReading reading = platform::readMemory();
  const auto snapshotOf = [](double totalBytes, const platform::MemoryInUse& inUse) {
    return Snapshot{inUse.usedBytes / kBytesPerGB, totalBytes / kBytesPerGB,
                    inUse.freeBytes / kBytesPerGB};
  };
  if (!reading.limit) {
    return snapshotOf(reading.totalBytes, reading.inUse.value_or(platform::MemoryInUse{}));
  }
  Snapshot snapshot = snapshotOf(reading.limit->totalBytes, reading.limit->inUse);
  snapshot.isLimit = true;
  return snapshot;
}

}  // namespace SystemMemory
