#include "platform/linux/idle_watch.h"

#include <time.h>
#include <unistd.h>

#include <array>
#include <climits>
#include <string>
#include <string_view>
#include <utility>

namespace platform {
namespace {

std::optional<std::uint64_t> timeOf(clockid_t clock) {
  timespec time = {};
  if (clock_gettime(clock, &time) != 0) return std::nullopt;
  constexpr std::uint64_t kNanosecondsPerSecond = 1'000'000'000;
  return static_cast<std::uint64_t>(time.tv_sec) * kNanosecondsPerSecond +
         static_cast<std::uint64_t>(time.tv_nsec);
}

/// Looks how far the program's own time jumps: 1 to 10 ms where the kernel counts in ticks.
bool isCountFine() {
  constexpr std::uint64_t kShortestRun = 20'000;  // nanoseconds: waking up and one answer
  constexpr int kMostReads = 10'000;              // some ms
  const auto begin = timeOf(CLOCK_PROCESS_CPUTIME_ID);
  for (int i = 0; begin && i < kMostReads; ++i) {
    const auto now = timeOf(CLOCK_PROCESS_CPUTIME_ID);
    if (!now) return false;
    if (*now != *begin) return *now - *begin < kShortestRun;
  }
  return false;
}

/// Whether the pids there are ours: not so with the host's proc file system in a container, or the
/// other way round.
bool tellsOwnPids(const char* procRoot) {
  std::array<char, PATH_MAX> target{};
  const std::string link = std::string(procRoot) + "/self";
  const ssize_t length = readlink(link.c_str(), target.data(), target.size());
  return length > 0 && std::string_view(target.data(), static_cast<std::size_t>(length)) ==
                           std::to_string(getpid());
}

}  // namespace

std::optional<std::uint64_t> cpuTimeOfPid(std::int32_t pid) {
  // As the kernel numbers the clocks of processes; clock_getcpuclockid would ask it twice.
  constexpr unsigned kTimeOnCpu = 2;
  const auto time = timeOf(static_cast<clockid_t>((~static_cast<unsigned>(pid) << 3) | kTimeOnCpu));
  return time == 0 ? std::nullopt : time;
}

bool isCpuTimeOfPidExact(const char* procRoot) {
  return tellsOwnPids(procRoot) && isCountFine();
}

bool IdleWatch::hasRested(std::int32_t pid, CpuTime cpuTime) {
  if (wait_ > 0) {
    // The older count is kept. That is safe: the process is read after it was taken, so if it is
    // still the same later, nothing ran since that reading either.
    --wait_;
    return false;
  }
  const auto now = cpuTime(pid);
  const auto before = std::exchange(cpuTime_, now);
  if (!now || !before) {
    skips_ = static_cast<std::uint8_t>(pid % kMostSkips);  // not all in one scan
    return false;
  }
  if (now != before) {
    constexpr std::uint8_t kMostRuns = 3;
    if (runs_ < kMostRuns) ++runs_;
    wait_ = static_cast<std::uint8_t>((1U << runs_) - 1);
    skips_ = 0;
    return false;
  }
  runs_ = 0;
  if (skips_ == kMostSkips) {
    skips_ = 0;
    return false;
  }
  ++skips_;
  return true;
}

}  // namespace platform
