#pragma once

#include <cstdint>
#include <optional>

// Whether a process has run since it was read. One that has not has changed nothing of itself: its
// arguments, its owner and its own memory are what they were.

namespace platform {

/// For how many nanoseconds the process that has the pid has computed, all its threads together; a
/// thread that is running at this moment is counted up to its last tick at the least. None when no
/// process has the pid, or nothing of it has been counted yet: that much it has in common with
/// every process that has just begun.
std::optional<std::uint64_t> cpuTimeOfPid(std::int32_t pid);

/// Whether that tells every run of a process: `procRoot` tells of the same pids as the system
/// calls, and the kernel's count is finer than the shortest run.
bool isCpuTimeOfPidExact(const char* procRoot = "/proc");

/// Watches one process from scan to scan.
class IdleWatch {
 public:
  /// cpuTimeOfPid, or what stands for it.
  using CpuTime = std::optional<std::uint64_t> (*)(std::int32_t pid);

  /// To be asked before the process is read. Whether it has not run since it was last asked, and
  /// so need not be read. Not so at the first time, and in `kMostSkips` + 1 times in a row at least
  /// once: memory can be changed by others too (the kernel joins pages, a debugger writes).
  /// Processes that are never at rest are asked at every eighth time, because asking has a price.
  bool hasRested(std::int32_t pid, CpuTime cpuTime);

  /// Whether it has not run since hasRested() was true.
  bool restsStill(std::int32_t pid, CpuTime cpuTime) const { return cpuTime(pid) == cpuTime_; }

  /// The next time is the first.
  void forget() { cpuTime_.reset(); }

  static constexpr int kMostSkips = 12;

 private:
  std::optional<std::uint64_t> cpuTime_;
  std::uint8_t skips_ = 0;  ///< how often in a row it was true
  std::uint8_t runs_ = 0;   ///< how often in a row the process was found to have run
  std::uint8_t wait_ = 0;   ///< how often more it is taken to have run, unasked
};

}  // namespace platform
