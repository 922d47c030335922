#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

#include "platform/processes.h"

namespace platform {

/// The memory that a process itself uses, in bytes, from /proc/PID/statm: resident - shared pages.
/// Without what is swapped out.
std::optional<std::uint64_t> residentFootprint(std::string_view statm, std::uint64_t pageSize);

/// The same from /proc/PID/status, swapped-out memory included: RssAnon + VmSwap; VmRSS alone when
/// the kernel does not tell these apart. None for a process without memory of its own.
std::optional<std::uint64_t> footprintWithSwap(std::string_view status);

/// The fields of /proc/PID/stat that tell where a process comes from and how it is.
struct ProcessStat {
  char state = '?';             ///< 'Z': it has ended, or its first thread has
  std::int32_t parent = 0;      ///< 0: none that can be seen from here
  bool isKernelThread = false;  ///< it runs no program
  int threads = 0;  ///< threads that have not ended; the first counts until all have ended
  std::uint64_t startTicks = 0;  ///< when it was started, in clock ticks since boot
};

/// None when the text is incomplete.
std::optional<ProcessStat> processStat(std::string_view stat);

/// A process whose first thread has ended still runs as long as another thread does.
ProcessState stateOf(const ProcessStat& stat);

}  // namespace platform
