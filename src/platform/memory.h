#pragma once

#include <optional>

namespace platform {

/// How the memory is used. Caches that the kernel would give up at once are in neither figure.
struct MemoryInUse {
  double usedBytes = 0;  ///< held by processes and the kernel
  double freeBytes = 0;  ///< held by nobody
};

/// What the system tells of its memory.
struct MemoryReading {
  double totalBytes = 0;             ///< installed memory; 0 when unknown
  std::optional<MemoryInUse> inUse;  ///< empty when the system gives no counts
};

/// The machine's memory now.
MemoryReading readMemory();

}  // namespace platform
