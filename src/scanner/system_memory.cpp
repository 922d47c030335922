#include "scanner/system_memory.h"

#include "platform/memory.h"

namespace SystemMemory {

Snapshot snapshot() {
  constexpr double kBytesPerGB = 1073741824;
  const platform::MemoryReading reading = platform::readMemory();
  const platform::MemoryInUse inUse = reading.inUse.value_or(platform::MemoryInUse{});
  return {inUse.usedBytes / kBytesPerGB, reading.totalBytes / kBytesPerGB,
          inUse.freeBytes / kBytesPerGB};
}

}  // namespace SystemMemory
