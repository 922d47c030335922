#pragma once

#include <cstdint>
#include <optional>

// Whether a process has run since it was read. One that has not has changed nothing of itself: its
// arguments, its owner and its own memory are what they were.

namespace platform {

/// For how many nanoseconds the process that has the pid has computed, all its threads together; a
/// thread that is running at this moment is counted up to its last tick at least. None when no
/// process has the pid, or the count is still 0, as that of every new process is: such a count
/// can't tell one process from the next.
std::optional<std::uint64_t> cpuTimeOfPid(std::int32_t pid);

/// Whether that tells every run of a process: `procRoot` tells of the same pids as the system
/// calls, and the kernel's count is finer than the shortest run.
bool isCpuTimeOfPidExact(const char* procRoot = "/proc");

/// Watches one process from scan to scan.
class IdleWatch {
 public:
  /// cpuTimeOfPid, or what stands for it.
  using CpuTime = std::optional<std::uint64_t> (*)(std::int32_t pid);

  /// To be asked before the process is read. Whether it has not run since this was last asked, so
  /// that it need not be read. False the first time, and at least once in `kMostSkips` + 1 times:
  /// others can change a process's memory, too (the kernel joins pages, a debugger writes). For
  /// processes that always run the kernel is asked only every eighth time, because asking costs.
  bool hasRested(std::int32_t pid, CpuTime cpuTime);

  /// Whether it has not run since hasRested() was true.
  bool restsStill(std::int32_t pid, CpuTime cpuTime) const { return cpuTime(pid) == cpuTime_; }

  /// Starts over: the next hasRested() is taken for the first.
  void forget() { cpuTime_.reset(); }

  static constexpr int kMostSkips = 12;

 private:
  std::optional<std::uint64_t> cpuTime_;
  std::uint8_t skips_ = 0;  ///< how often in a row hasRested() was true
  std::uint8_t runs_ = 0;   ///< how often in a row the process was found to have run
  std::uint8_t wait_ = 0;   ///< how many more times it is taken to have run, unasked
};

}  // namespace platform
