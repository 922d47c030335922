#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "platform/linux/file_reader.h"
#include "platform/linux/idle_watch.h"
#include "platform/linux/kept_files.h"
#include "platform/linux/process_status.h"
#include "platform/linux/procfs.h"
#include "platform/mapped_memory.h"
#include "platform/processes.h"

namespace platform {

/// Implements platform/processes.h for one proc file system, which must outlive it. For one
/// thread.
///
/// The open file with a process's arguments proves that everything was read of the same process:
/// an open file belongs to the process, not to the pid. As long as it can be read, no other
/// process has had the pid since it was opened, so whatever was read by pid in the meantime is
/// this process's.
class ProcessReader {
 public:
  /// Returns ProcessFacts::identity of the process that has the pid; none when it is not known.
  using IdentitySource = std::optional<std::uint64_t> (*)(std::int32_t pid);

  /// Identities come from `identitySource` alone; without one they are made from what a process
  /// runs and when it started. With `cpuTime`, processes that have not run since they were read are
  /// not read again, as IdleWatch tells.
  explicit ProcessReader(const ProcFs& proc, IdentitySource identitySource = nullptr,
                         IdleWatch::CpuTime cpuTime = nullptr);

  const std::vector<std::int32_t>& pids();
  [[nodiscard]] bool lookAt(std::int32_t pid, ProcessFacts& facts);
  [[nodiscard]] bool readCommandLine(ProcessFacts& facts);
  [[nodiscard]] bool read(std::int32_t pid, ProcessFacts& facts) {
    return lookAt(pid, facts) && readCommandLine(facts);
  }
  std::optional<Fingerprint> executable();
  std::optional<std::uint64_t> footprint(std::int32_t pid);
  /// platform/mapped_memory.h.
  std::optional<SharedMemory> sharedMemory(std::int32_t pid);
  [[nodiscard]] bool confirm(std::int32_t pid, ProcessFacts& facts);
  std::optional<std::uint64_t> identity(std::int32_t pid);
  std::optional<ProcessState> state(std::int32_t pid);
  std::optional<std::uint32_t> effectiveUid(std::int32_t pid) const { return proc_.owner(pid); }

 private:
  /// What we have learnt of a process and stays true as long as it lives, except the parent, which
  /// may end first.
  struct Known {
    std::int32_t pid = 0;
    bool isParentListed = false;  ///< at the time when `stat` was read
    std::optional<ProcessStat> stat;
    std::optional<std::uint64_t> identity;

    // What holds as long as it rests.
    IdleWatch rest;
    std::optional<Fingerprint> fingerprint;
    std::optional<std::uint64_t> footprint;  ///< none: not read yet, or others can change it
    std::uint32_t owner = 0;
    bool isFootprintWithSwap = false;
  };

  ProcessReader(const ProcFs& proc, IdentitySource identitySource, IdleWatch::CpuTime cpuTime,
                std::size_t filesToKeep);

  Known* find(std::int32_t pid);
  Known& known(std::int32_t pid);
  void learn(Known& process);
  bool hasRested(Known& process);
  bool readAnew(Known& process, ProcessFacts& facts);
  bool readBlock(Known& process, std::uint32_t owner);
  bool readArgumentsOfResting(Known& process);
  std::optional<std::uint64_t> readFootprint(std::int32_t pid, const std::string& folder);
  bool isParentOutdated(const Known& process);
  std::string_view comm();

  const ProcFs& proc_;
  IdentitySource identitySource_;
  IdleWatch::CpuTime cpuTime_;
  KeptFiles blocks_;  ///< where arguments are read from
  KeptFiles sizes_;   ///< where memory is read from
  FileReader block_;  ///< the arguments, into which views point
  FileReader small_;  ///< everything else
  std::uint64_t pageSize_;
  std::uint64_t tickNanoseconds_;
  std::vector<std::int32_t> pids_;  ///< of the last listing, ascending
  std::vector<Known> known_;        ///< by pid
  std::size_t next_ = 0;            ///< behind the one of `known_` that was asked for last
  /// Of the parent that was asked for last, in this scan.
  struct Parent {
    std::int32_t pid = 0;  ///< 0: none was
    bool isListed = false;
    std::uint64_t startTicks = 0;  ///< 0: unknown
  };
  Parent lastParent_;
  std::int32_t lastPid_ = 0;     ///< of the process that was looked at last; 0: it is gone
  std::uint32_t lastOwner_ = 0;  ///< its effective user
  bool lastRests_ = false;       ///< its arguments were not read, because they still hold
  std::string_view lastBlock_;   ///< its arguments, in `block_`
  std::string lastFolder_;       ///< where its memory stands: "", or of a thread "task/TID/"
  /// Of the footprint that was asked last: whose it was, and whether much of it is shared.
  std::int32_t sharesMuch_ = 0;
  bool swapInUse_ = true;  ///< as of the last pids(); true until then, which is right in any case
};

/// The one that reads /proc.
ProcessReader& processReader();

}  // namespace platform
