#include "platform/processes.h"

#include <libproc.h>
#include <sys/proc.h>
#include <sys/sysctl.h>
#include <sys/syslimits.h>
#include <sys/time.h>
#include <unistd.h>

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <string_view>

#include "platform/macos/argument_block.h"
#include "platform/macos/process_record.h"
#include "platform/posix/fingerprint.h"
#include "platform/process_place.h"
#include "text/path.h"
#include "text/unicode.h"

namespace platform {
namespace {

/// The process's argument block, in `buffer`; "" when it is another user's, or gone.
std::string_view argumentBlock(std::int32_t pid, std::vector<char>& buffer) {
  int name[] = {CTL_KERN, KERN_PROCARGS2, pid};
  std::size_t size = 0;
  if (sysctl(name, std::size(name), nullptr, &size, nullptr, 0) != 0 || size < 1) return {};

  // When a block does not fit, the kernel gives its end, which is the environment. The block may
  // have grown since it was measured; only if some of the buffer stays unused did all of it fit,
  // hence the slack. The kernel refuses a buffer that is longer than any block.
  constexpr std::size_t kSlack = 64;
  constexpr std::size_t kLongest = ARG_MAX + sizeof(int);
  const std::size_t room = std::max(size, std::min(size + kSlack, kLongest));
  if (buffer.size() < room) buffer.resize(room);
  std::size_t filled = room;
  if (sysctl(name, std::size(name), buffer.data(), &filled, nullptr, 0) != 0) return {};
  if (filled == room && room > size) return {};
  return {buffer.data(), filled};
}

constexpr std::uint64_t kMicrosecondsPerSecond = 1'000'000;
constexpr std::uint64_t kNanosecondsPerMicrosecond = 1'000;

// Of the process that was looked at last.
std::int32_t lastPid = 0;
std::optional<std::uint64_t> lastStart;  ///< in microseconds
std::string_view lastBlock;

/// "" when unreadable.
std::string executablePath(std::int32_t pid) {
  char path[PROC_PIDPATHINFO_MAXSIZE] = {};
  const int length = proc_pidpath(pid, path, sizeof path);
  return length < 1 ? std::string() : std::string(path);
}

}  // namespace

std::span<const std::int32_t> allPids() {
  constexpr std::size_t kHeadroom = 16;
  const int wanted = proc_listpids(PROC_ALL_PIDS, 0, nullptr, 0);
  if (wanted < 1) return {};

  static std::vector<std::int32_t> pids;
  pids.resize(static_cast<std::size_t>(wanted) / sizeof(pid_t) + kHeadroom);
  const int filled =
      proc_listpids(PROC_ALL_PIDS, 0, pids.data(), static_cast<int>(pids.size() * sizeof(pid_t)));
  const std::size_t count = static_cast<std::size_t>(std::max(filled, 0)) / sizeof(pid_t);
  pids.resize(std::min(count, pids.size()));
  std::erase_if(pids, [](std::int32_t pid) { return pid <= 0; });
  return pids;
}

bool lookAtProcess(std::int32_t pid, ProcessFacts& facts) {
  // Asked first: confirmProcess asks again at the end, and equal answers show that all in between
  // was read of this process.
  const auto record = processRecord(pid);
  facts.effectiveUid = record ? std::optional(record->effectiveUid) : std::nullopt;
  facts.parent = record ? std::optional(record->parent) : std::nullopt;
  lastStart = startTimeOf(record);
  facts.startTime = lastStart;
  if (lastStart) *facts.startTime *= kNanosecondsPerMicrosecond;
  facts.identity.reset();

  static std::vector<char> buffer;
  lastPid = pid;
  lastBlock = argumentBlock(pid, buffer);
  // Without arguments the name comes from the executable's path, which no fingerprint covers.
  facts.fingerprint = lastBlock.empty()
                          ? std::nullopt
                          : std::optional(fingerprintOf(lastBlock, lastStart.value_or(0)));
  return true;
}

bool readCommandLine(ProcessFacts& facts) {
  facts.executable.reset();
  facts.title = {};
  readArgumentBlock(lastBlock, facts);
  facts.name = facts.arguments.empty()
                   ? text::repairedUtf8(text::lastPathComponent(executablePath(lastPid)))
                   : std::string(text::lastPathComponent(facts.arguments.front()));
  if (facts.arguments.empty()) facts.fingerprint.reset();
  return !facts.name.empty();
}

std::optional<Fingerprint> executableOfProcess() {
  return std::nullopt;
}

std::optional<std::uint64_t> physicalFootprint(std::int32_t pid) {
  rusage_info_v4 usage = {};
  if (proc_pid_rusage(pid, RUSAGE_INFO_V4, reinterpret_cast<rusage_info_t*>(&usage)) == 0 &&
      usage.ri_phys_footprint != 0) {
    return usage.ri_phys_footprint;
  }
  proc_taskinfo task = {};
  constexpr int kTaskSize = sizeof task;
  if (proc_pidinfo(pid, PROC_PIDTASKINFO, 0, &task, kTaskSize) != kTaskSize) return std::nullopt;
  return task.pti_resident_size;
}

bool confirmProcess(std::int32_t pid, ProcessFacts& facts) {
  facts.identity = processIdentity(pid);
  const bool isSame = facts.identity == lastStart;
  if (!isSame) facts.identity.reset();
  return isSame;
}

std::optional<ProcessState> processState(std::int32_t pid) {
  const auto record = processRecord(pid);
  if (!startTimeOf(record)) return std::nullopt;
  if (record->state == SZOMB) return ProcessState::ended;
  return record->state == SSTOP ? ProcessState::stopped : ProcessState::runs;
}

std::uint64_t processClock() {
  timeval now = {};
  gettimeofday(&now, nullptr);
  return (static_cast<std::uint64_t>(now.tv_sec) * kMicrosecondsPerSecond +
          static_cast<std::uint64_t>(now.tv_usec)) *
         kNanosecondsPerMicrosecond;
}

/// launchd tells an ordinary user nothing of other users' services.
std::string placeOfProcess(std::int32_t) {
  return {};
}

/// The terminal asks for it, which this edition does not have.
std::optional<std::string> workingFolderOfProcess(std::int32_t) {
  return std::nullopt;
}

std::int32_t ownPid() {
  return getpid();
}

}  // namespace platform
