#include "platform/processes.h"

#include <time.h>
#include <unistd.h>

#include "platform/linux/process_reader.h"
#include "platform/signals.h"

namespace platform {

std::span<const std::int32_t> allPids() {
  return processReader().pids();
}

bool lookAtProcess(std::int32_t pid, ProcessFacts& facts) {
  return processReader().lookAt(pid, facts);
}

bool readCommandLine(ProcessFacts& facts) {
  return processReader().readCommandLine(facts);
}

std::optional<Fingerprint> executableOfProcess() {
  return processReader().executable();
}

std::optional<std::uint64_t> physicalFootprint(std::int32_t pid) {
  return processReader().footprint(pid);
}

bool confirmProcess(std::int32_t pid, ProcessFacts& facts) {
  return processReader().confirm(pid, facts);
}

std::optional<std::uint64_t> processIdentity(std::int32_t pid) {
  return SignalTarget(pid).identity();
}

std::optional<ProcessState> processState(std::int32_t pid) {
  return processReader().state(pid);
}

std::uint64_t processClock() {
  timespec now = {};
  clock_gettime(CLOCK_BOOTTIME, &now);
  constexpr std::uint64_t kNanosecondsPerSecond = 1'000'000'000;
  return static_cast<std::uint64_t>(now.tv_sec) * kNanosecondsPerSecond +
         static_cast<std::uint64_t>(now.tv_nsec);
}

std::int32_t ownPid() {
  return getpid();
}

}  // namespace platform
