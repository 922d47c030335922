#pragma once

#include <string_view>

#include "platform/memory.h"

namespace platform {

/// What /proc/meminfo says: used = MemTotal - MemAvailable, free = MemFree. A missing line
/// leaves empty what needs it.
MemoryReading memoryIn(std::string_view memInfo);

/// Whether anything is swapped out: SwapTotal and SwapFree differ, or are not told.
bool isSwapInUse(std::string_view memInfo);

class ProcFs;

/// What platform/memory.h promises, from one proc file system. The total is told also where
/// that holds no meminfo.
MemoryReading readMemory(const ProcFs& proc);

}  // namespace platform
