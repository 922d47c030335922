#pragma once

#include <optional>

namespace platform {

struct MemoryInUse {
  double usedBytes = 0;
  double freeBytes = 0;
};

struct MemoryReading {
  double totalBytes = 0;             ///< installed memory; 0 when unknown
  std::optional<MemoryInUse> inUse;  ///< empty when the system gives no counts
};

/// The machine's memory now.
MemoryReading readMemory();

}  // namespace platform
