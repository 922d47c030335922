#pragma once

#include <cstdint>
#include <optional>

namespace platform {

/// What the kernel's process table says of one process; any user may read it.
struct ProcessRecord {
  std::uint32_t effectiveUid = 0;
  std::int32_t parent = 0;
  char state = 0;               ///< SRUN, SSTOP, SZOMB, …
  std::uint64_t startTime = 0;  ///< in microseconds since 1970; 0 when there is no such process
};

/// None when the kernel refuses to answer. For a pid that no process has, a record of zeros.
std::optional<ProcessRecord> processRecord(std::int32_t pid);

/// None for a pid that no process has.
std::optional<std::uint64_t> startTimeOf(const std::optional<ProcessRecord>& record);

}  // namespace platform
