#pragma once

#include <string_view>

#include "platform/memory.h"

namespace platform {

/// Reads /proc/meminfo: used = MemTotal - MemAvailable, free = MemFree. Where a line is missing,
/// the figures that need it are empty.
MemoryReading memoryIn(std::string_view memInfo);

/// Whether anything may be swapped out: SwapTotal and SwapFree differ or are missing.
bool isSwapInUse(std::string_view memInfo);

class ProcFs;

/// As in platform/memory.h, from one proc file system, but for the limit. The total is known even
/// without meminfo there.
MemoryReading readMemory(const ProcFs& proc);

}  // namespace platform
