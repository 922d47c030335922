#include "platform/linux/mem_info.h"

#include <algorithm>

#include "platform/linux/proc_table.h"

namespace platform {

MemoryReading memoryIn(std::string_view memInfo) {
  const auto total = bytesInTable(memInfo, "MemTotal");
  const auto available = bytesInTable(memInfo, "MemAvailable");
  const auto free = bytesInTable(memInfo, "MemFree");

  MemoryReading reading{.totalBytes = static_cast<double>(total.value_or(0))};
  if (total && available && free) {
    // A container may be told more available than it has in all.
    const auto used = *total - std::min(*available, *total);
    reading.inUse = {static_cast<double>(used), static_cast<double>(*free)};
  }
  return reading;
}

bool isSwapInUse(std::string_view memInfo) {
  const auto total = bytesInTable(memInfo, "SwapTotal");
  return !total || total != bytesInTable(memInfo, "SwapFree");
}

}  // namespace platform
