#include "platform/linux/process_reader.h"

#include <time.h>
#include <unistd.h>

#include <algorithm>

#include "platform/linux/memory.h"
#include "platform/linux/process_arguments.h"
#include "platform/linux/process_identity.h"
#include "platform/posix/fingerprint.h"

namespace platform {
namespace {

constexpr std::size_t kLongestSmallFile = 1 << 20;

/// An open statm holds one page of kernel memory: these take at most 1 MiB.
constexpr std::size_t kMostSizesKept = 256;

std::size_t sizesToKeep(std::size_t files) {
  return std::min(files / 4, kMostSizesKept);
}

Fingerprint fingerprintOfOrigin(const ProcessOrigin& origin) {
  if (!origin.executable.empty()) return fingerprintOf(origin.executable);
  Fingerprint ofComm = fingerprintOf(origin.comm);
  ++ofComm.low;  // a path with the same bytes tells more, so it has another fingerprint
  return ofComm;
}

}  // namespace

ProcessReader::ProcessReader(const ProcFs& proc, IdentitySource identitySource,
                             IdleWatch::CpuTime cpuTime)
    : ProcessReader(proc, identitySource, cpuTime, platform::filesToKeep()) {}

ProcessReader::ProcessReader(const ProcFs& proc, IdentitySource identitySource,
                             IdleWatch::CpuTime cpuTime, std::size_t filesToKeep)
    : proc_(proc),
      identitySource_(identitySource),
      cpuTime_(cpuTime),
      blocks_(proc, "cmdline", filesToKeep - sizesToKeep(filesToKeep)),
      sizes_(proc, "statm", sizesToKeep(filesToKeep)),
      block_(kLongestCommandLine + 1),  // one byte more shows that it was cut
      small_(kLongestSmallFile),
      pageSize_(static_cast<std::uint64_t>(sysconf(_SC_PAGESIZE))),
      tickNanoseconds_(1'000'000'000U / static_cast<std::uint64_t>(sysconf(_SC_CLK_TCK))) {}

const std::vector<std::int32_t>& ProcessReader::pids() {
  const auto memInfo = proc_.read("meminfo", small_);
  swapInUse_ = !memInfo || isSwapInUse(*memInfo);
  proc_.listPids(pids_);
  blocks_.keepOnly(pids_);
  sizes_.keepOnly(pids_);
  auto pid = pids_.begin();
  std::erase_if(known_, [&](const Known& process) {
    while (pid != pids_.end() && *pid < process.pid) ++pid;
    return pid == pids_.end() || *pid != process.pid;
  });
  known_.reserve(pids_.size());  // no more: there may be thousands
  next_ = 0;
  lastParent_ = {};
  return pids_;
}

bool ProcessReader::lookAt(std::int32_t pid, ProcessFacts& facts) {
  facts.identity.reset();
  facts.fingerprint.reset();
  lastPid_ = 0;
  lastFolder_.clear();
  Known& process = known(pid);
  lastRests_ = hasRested(process);
  if (lastRests_) {
    facts.effectiveUid = process.owner;
  } else if (!readAnew(process, facts)) {
    return false;
  }
  lastPid_ = pid;
  lastOwner_ = *facts.effectiveUid;
  if (!process.stat || isParentOutdated(process)) learn(process);
  facts.parent.reset();
  facts.session.reset();
  facts.startTime.reset();
  if (process.stat) {
    facts.parent = process.stat->parent;
    if (process.stat->session > 0) facts.session = process.stat->session;
    facts.startTime = (process.stat->startTicks + 1) * tickNanoseconds_;
  }
  if (!lastRests_ && !lastBlock_.empty()) {
    process.fingerprint = fingerprintOf(lastBlock_, facts.startTime.value_or(0));
  }
  facts.fingerprint = process.fingerprint;
  return facts.fingerprint || !process.stat || !process.stat->isKernelThread;
}

/// Whether it need not be read: all that was read of it still holds.
bool ProcessReader::hasRested(Known& process) {
  if (cpuTime_ == nullptr || !process.rest.hasRested(process.pid, cpuTime_)) return false;
  // Without arguments there is no fingerprint: the executable may have become readable by now.
  return process.fingerprint || (process.stat && process.stat->isKernelThread);
}

/// The owner and the arguments, as they are now. False when the process is gone.
bool ProcessReader::readAnew(Known& process, ProcessFacts& facts) {
  const std::int32_t pid = process.pid;
  facts.effectiveUid = proc_.owner(pid);
  if (!facts.effectiveUid) return false;

  if (!readBlock(process, *facts.effectiveUid)) {
    // The owner was read first, perhaps of the process that had the pid before: read it again.
    facts.effectiveUid = proc_.owner(pid);
    if (!facts.effectiveUid) return false;
  }
  process.owner = *facts.effectiveUid;
  process.fingerprint.reset();
  process.footprint.reset();
  return true;
}

/// Sets `lastBlock_`. False when the pid may have been given to another process since its arguments
/// were read before; what was learnt of it is forgotten then.
bool ProcessReader::readBlock(Known& process, std::uint32_t owner) {
  // An unreadable block is an empty one: the executable may still tell the name.
  lastBlock_ = blocks_.read(process.pid, owner, block_).value_or("");
  if (blocks_.wasKept()) return true;
  process = {.pid = process.pid, .rest = process.rest};
  if (lastParent_.pid == process.pid) lastParent_ = {};
  return false;
}

/// Of the process that was looked at last, and was not read because it rests. False when it is
/// gone.
bool ProcessReader::readArgumentsOfResting(Known& process) {
  lastRests_ = false;
  const auto before = process.stat;
  if (!readBlock(process, process.owner)) {
    // There may be too many processes to keep all their files open: then the start tells. Who began
    // in the same tick is told apart by the identity, which is asked for anew.
    learn(process);
    if (!before || !process.stat || process.stat->startTicks != before->startTicks) return false;
  }
  return !lastBlock_.empty();
}

bool ProcessReader::readCommandLine(ProcessFacts& facts) {
  facts.executable.reset();
  facts.title = {};
  if (lastPid_ == 0) return false;
  Known& process = known(lastPid_);
  if (lastRests_) {
    if (!readArgumentsOfResting(process)) return false;
    facts.fingerprint = fingerprintOf(lastBlock_, facts.startTime.value_or(0));
  }
  readArguments(lastBlock_, {}, facts);
  if (!needsOrigin(lastBlock_, facts)) return !facts.name.empty();

  ProcFs::Path path;
  ProcessOrigin origin{.executable = proc_.executable(process.pid, path)};
  if (origin.executable.empty() && lastBlock_.empty()) {
    // A zombie, or a process that goes on although its first thread has ended: the others
    // still tell of it.
    learn(process);
    const bool goesOn = process.stat && process.stat->state == 'Z' && process.stat->threads > 1;
    const auto thread = goesOn ? proc_.anotherThread(process.pid) : std::nullopt;
    if (!thread) return false;
    lastFolder_ = "task/" + std::to_string(*thread) + "/";
    lastBlock_ = proc_.read(process.pid, lastFolder_ + "cmdline", block_).value_or("");
    origin.executable = proc_.executable(process.pid, path, lastFolder_ + "exe");
  }
  if (origin.executable.empty() && lastBlock_.empty()) return false;
  if (origin.executable.empty()) origin.comm = comm();
  facts.executable = fingerprintOfOrigin(origin);
  facts.title = openTitle(lastBlock_);
  readArguments(lastBlock_, origin, facts);
  return !facts.name.empty();
}

std::optional<Fingerprint> ProcessReader::executable() {
  ProcFs::Path path;
  ProcessOrigin origin{.executable = proc_.executable(lastPid_, path, lastFolder_ + "exe")};
  if (origin.executable.empty()) origin.comm = comm();
  return fingerprintOfOrigin(origin);
}

/// Of the process that was looked at last; "" when unreadable.
std::string_view ProcessReader::comm() {
  std::string_view name = proc_.read(lastPid_, lastFolder_ + "comm", small_).value_or("");
  if (name.ends_with('\n')) name.remove_suffix(1);
  return name;
}

std::optional<std::uint64_t> ProcessReader::footprint(std::int32_t pid) {
  sharesMuch_ = 0;
  if (pid != lastPid_) return readFootprint(pid, {});
  Known& process = known(pid);
  if (lastRests_ && process.footprint && process.isFootprintWithSwap == swapInUse_) {
    return process.footprint;
  }
  const auto footprint = readFootprint(pid, lastFolder_);
  // Pages that are mapped from files go when memory is short, whether the process runs or not.
  process.footprint = sharesMuch_ == 0 ? footprint : std::nullopt;
  process.isFootprintWithSwap = swapInUse_;
  return footprint;
}

/// `folder` is "" or that of a thread. Sets `sharesMuch_`.
std::optional<std::uint64_t> ProcessReader::readFootprint(std::int32_t pid,
                                                          const std::string& folder) {
  if (swapInUse_) {
    const auto status = proc_.read(pid, folder + "status", small_);
    if (status && sharedInStatus(*status)) sharesMuch_ = pid;
    return status ? footprintWithSwap(*status) : std::nullopt;
  }
  const auto statm = pid == lastPid_ && folder.empty() ? sizes_.read(pid, lastOwner_, small_)
                                                       : proc_.read(pid, folder + "statm", small_);
  if (statm && sharedInStatm(*statm, pageSize_) >= kLeastSharedBytes) sharesMuch_ = pid;
  return statm ? residentFootprint(*statm, pageSize_) : std::nullopt;
}

std::optional<SharedMemory> ProcessReader::sharedMemory(std::int32_t pid) {
  if (pid != sharesMuch_) return std::nullopt;
  const std::string folder = pid == lastPid_ ? lastFolder_ : std::string();
  const auto status = proc_.read(pid, folder + "status", small_);
  return status ? sharedInStatus(*status) : std::nullopt;
}

bool ProcessReader::confirm(std::int32_t pid, ProcessFacts& facts) {
  if (pid != lastPid_) return false;
  Known& process = known(pid);
  if (lastRests_ && process.identity && process.rest.restsStill(pid, cpuTime_)) {
    facts.identity = process.identity;
    return true;
  }
  if (lastRests_ && !readArgumentsOfResting(process)) return false;

  // After the reading, which may have found that it is not who it was.
  auto identity = process.identity;
  if (!identity && identitySource_) {
    identity = identitySource_(pid);
  } else if (!identity && process.stat) {
    ProcFs::Path path;
    identity = madeIdentity(process.stat->startTicks, proc_.executable(pid, path), lastBlock_);
  }
  const auto isStillThere = blocks_.isStillThere();
  if (!isStillThere) return true;  // its file can't be opened, so the identity stays unknown
  if (!*isStillThere) return false;
  process.identity = identity;
  facts.identity = identity;
  return true;
}

std::optional<std::uint64_t> ProcessReader::identity(std::int32_t pid) {
  ProcessFacts facts;
  known(pid).rest.forget();  // a signal's safety hangs on it: everything is read now
  if (!read(pid, facts) || !confirm(pid, facts)) return std::nullopt;
  return facts.identity;
}

std::optional<ProcessState> ProcessReader::state(std::int32_t pid) {
  const auto bytes = proc_.read(pid, "stat", small_);
  const auto stat = bytes ? processStat(*bytes) : std::nullopt;
  return stat ? std::optional(stateOf(*stat)) : std::nullopt;
}

ProcessReader::Known* ProcessReader::find(std::int32_t pid) {
  const auto place = std::ranges::lower_bound(known_, pid, {}, &Known::pid);
  return place != known_.end() && place->pid == pid ? &*place : nullptr;
}

/// Mostly it is the one after the last, or that one again.
ProcessReader::Known& ProcessReader::known(std::int32_t pid) {
  for (const std::size_t i : {next_, next_ - 1}) {
    if (i >= known_.size() || known_[i].pid != pid) continue;
    next_ = i + 1;
    return known_[i];
  }
  auto place = std::ranges::lower_bound(known_, pid, {}, &Known::pid);
  if (place == known_.end() || place->pid != pid) place = known_.insert(place, {.pid = pid});
  next_ = static_cast<std::size_t>(place - known_.begin()) + 1;
  return *place;
}

void ProcessReader::learn(Known& process) {
  const auto stat = proc_.read(process.pid, "stat", small_);
  process.stat = stat ? processStat(*stat) : std::nullopt;
  if (lastParent_.pid == process.pid) lastParent_ = {};
  process.isParentListed = process.stat && std::ranges::binary_search(pids_, process.stat->parent);
}

/// Whether the parent has ended, so that the process has another by now: the parent's pid is gone,
/// or belongs to a process that is younger than its supposed child.
bool ProcessReader::isParentOutdated(const Known& process) {
  if (!process.isParentListed) return false;
  const std::int32_t pid = process.stat->parent;
  // Most have the same parent as the one before.
  if (lastParent_.pid != pid) {
    const Known* const parent = find(pid);
    lastParent_ = {.pid = pid,
                   .isListed = std::ranges::binary_search(pids_, pid),
                   .startTicks = parent != nullptr && parent->stat ? parent->stat->startTicks : 0};
  }
  return !lastParent_.isListed || lastParent_.startTicks > process.stat->startTicks;
}

ProcessReader& processReader() {
  static ProcessReader reader(systemProc(), hasUniqueInodes() ? uniqueInodeOfPid : nullptr,
                              isCpuTimeOfPidExact() ? cpuTimeOfPid : nullptr);
  return reader;
}

// platform/processes.h.

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
