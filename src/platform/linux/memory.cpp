#include "platform/linux/memory.h"

#include <sys/sysinfo.h>

#include <algorithm>

#include "platform/linux/file_reader.h"
#include "platform/linux/memory_limit.h"
#include "platform/linux/process_status.h"
#include "platform/linux/procfs.h"

namespace platform {
namespace {

/// The total from sysinfo(), the same as MemTotal in /proc/meminfo.
double installedBytes() {
  struct sysinfo info = {};
  if (sysinfo(&info) != 0) return 0;
  return static_cast<double>(info.totalram) * info.mem_unit;
}

}  // namespace

MemoryReading memoryIn(std::string_view memInfo) {
  const auto total = bytesInTable(memInfo, "MemTotal");
  const auto available = bytesInTable(memInfo, "MemAvailable");
  const auto free = bytesInTable(memInfo, "MemFree");

  MemoryReading reading{.totalBytes = static_cast<double>(total.value_or(0))};
  if (total && available && free) {
    // In a container, MemAvailable may be more than MemTotal.
    const auto used = *total - std::min(*available, *total);
    reading.inUse = {static_cast<double>(used), static_cast<double>(*free)};
  }
  return reading;
}

bool isSwapInUse(std::string_view memInfo) {
  const auto total = bytesInTable(memInfo, "SwapTotal");
  return !total || total != bytesInTable(memInfo, "SwapFree");
}

MemoryReading readMemory(const ProcFs& proc) {
  FileReader reader(1 << 20);
  MemoryReading reading = memoryIn(proc.read("meminfo", reader).value_or(""));
  if (reading.totalBytes == 0) reading.totalBytes = installedBytes();
  return reading;
}

MemoryReading readMemory() {
  static MemoryLimitReader limits(systemProc());
  MemoryReading reading = readMemory(systemProc());
  reading.limit = limits.read(reading.totalBytes);
  return reading;
}

}  // namespace platform
