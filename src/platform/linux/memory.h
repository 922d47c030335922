#pragma once

#include <string_view>

#include "platform/memory.h"

namespace platform {

/// Reads /proc/meminfo: used = MemTotal - MemAvailable, free = MemFree, swap in use = SwapTotal -
/// SwapFree. Where a line is missing, the figures that need it are empty.
MemoryReading memoryIn(std::string_view memInfo);

/// Reads /proc/pressure/memory, or memory.pressure of a cgroup: their avg10. Empty without a line
/// "some"; a kernel may leave out "full".
std::optional<MemoryStalls> stallsIn(std::string_view pressure);

/// Whether anything may be swapped out: SwapTotal and SwapFree differ or are missing.
bool isSwapInUse(std::string_view memInfo);

class ProcFs;

/// As in platform/memory.h, from one proc file system, but for the limit. The total is known even
/// without meminfo there.
MemoryReading readMemory(const ProcFs& proc);

}  // namespace platform
