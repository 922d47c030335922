#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

#include "platform/mapped_memory.h"
#include "platform/processes.h"

namespace platform {

/// The amount in a line "key:   123 kB" of /proc/meminfo or /proc/PID/status, in bytes; none
/// when there is no such line, or it doesn't hold a number of kB.
std::optional<std::uint64_t> bytesInTable(std::string_view table, std::string_view key);

/// The memory that a process keeps busy, from /proc/PID/statm: resident - shared pages, in
/// bytes. What is swapped out is not in it.
std::optional<std::uint64_t> residentFootprint(std::string_view statm, std::uint64_t pageSize);

/// The same from /proc/PID/status, in RAM or swapped out: RssAnon + VmSwap; VmRSS when the
/// kernel gives no split. None for a process without memory of its own.
std::optional<std::uint64_t> footprintWithSwap(std::string_view status);

/// The shared pages in /proc/PID/statm, in bytes; 0 where they can't be told.
std::uint64_t sharedInStatm(std::string_view statm, std::uint64_t pageSize);

/// RssFile and RssShmem of /proc/PID/status; none when they are less than kLeastSharedBytes.
std::optional<SharedMemory> sharedInStatus(std::string_view status);

/// Of /proc/PID/stat, what tells where a process comes from and what has become of it.
struct ProcessStat {
  std::uint64_t startTicks = 0;  ///< when it was started, in clock ticks since boot
  std::int32_t parent = 0;       ///< 0: none that can be seen from here
  std::int32_t session = 0;      ///< the pid that began its session; 0: none that can be seen
  int threads = 0;               ///< those that have not ended; the first counts until all have
  char state = '?';              ///< 'Z': it has ended, or its first thread has
  bool isKernelThread = false;   ///< it runs no program
};

/// None when the text is not whole.
std::optional<ProcessStat> processStat(std::string_view stat);

/// A process whose first thread has ended runs as long as another does.
ProcessState stateOf(const ProcessStat& stat);

}  // namespace platform
