#include "platform/linux/memory.h"

#include <sys/sysinfo.h>

#include <algorithm>
#include <charconv>
#include <string>

#include "platform/linux/file_reader.h"
#include "platform/linux/file_tree.h"
#include "platform/linux/memory_limit.h"
#include "platform/linux/process_status.h"
#include "platform/linux/procfs.h"
#include "text/split.h"

namespace platform {
namespace {

/// The total from sysinfo(), the same as MemTotal in /proc/meminfo.
double installedBytes() {
  struct sysinfo info = {};
  if (sysinfo(&info) != 0) return 0;
  return static_cast<double>(info.totalram) * info.mem_unit;
}

/// Of the line "some avg10=0.12 avg60=…" that begins with `kind`.
std::optional<double> averageIn(std::string_view pressure, std::string_view kind) {
  const std::string beginning = std::string(kind) + " avg10=";
  while (!pressure.empty()) {
    const std::string_view line = text::takeUntil('\n', pressure);
    if (!line.starts_with(beginning)) continue;
    double percent = 0;
    const char* const begin = line.data() + beginning.size();
    const auto [end, error] =
        std::from_chars(begin, line.data() + line.size(), percent, std::chars_format::fixed);
    if (error != std::errc() || !(percent >= 0 && percent <= 100)) return std::nullopt;
    return percent;
  }
  return std::nullopt;
}

/// Where the kernel keeps no figures for the whole machine, or a container hides them, those of the
/// outermost cgroup that is there.
std::optional<MemoryStalls> readStalls(const ProcFs& proc, FileReader& reader) {
  if (const auto pressure = proc.read("pressure/memory", reader)) return stallsIn(*pressure);
  return stallsIn(systemTree().text("fs/cgroup/memory.pressure").value_or(""));
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
    reading.availableBytes = static_cast<double>(*total - used);
  }
  const auto swap = bytesInTable(memInfo, "SwapTotal");
  const auto freeSwap = bytesInTable(memInfo, "SwapFree");
  if (swap && freeSwap) reading.swappedBytes = *swap - std::min(*freeSwap, *swap);
  return reading;
}

std::optional<MemoryStalls> stallsIn(std::string_view pressure) {
  const auto some = averageIn(pressure, "some");
  if (!some) return std::nullopt;
  return MemoryStalls{*some, averageIn(pressure, "full").value_or(0)};
}

bool isSwapInUse(std::string_view memInfo) {
  const auto total = bytesInTable(memInfo, "SwapTotal");
  return !total || total != bytesInTable(memInfo, "SwapFree");
}

MemoryReading readMemory(const ProcFs& proc) {
  static FileReader reader(16 << 10);  // kept, because it is read at each refresh
  MemoryReading reading = memoryIn(proc.read("meminfo", reader).value_or(""));
  if (reading.totalBytes == 0) reading.totalBytes = installedBytes();
  reading.stalls = readStalls(proc, reader);
  return reading;
}

MemoryReading readMemory() {
  static MemoryLimitReader limits(systemProc());
  MemoryReading reading = readMemory(systemProc());
  reading.limit = limits.read(reading.totalBytes);
  return reading;
}

}  // namespace platform
