#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "platform/linux/file_reader.h"
#include "platform/linux/kept_files.h"
#include "platform/linux/process_status.h"
#include "platform/linux/procfs.h"
#include "platform/processes.h"

namespace platform {

/// What platform/processes.h promises, from one proc file system, which must outlive it. For
/// one thread.
///
/// What holds everything together that is read of a process is its file of arguments: an open
/// file belongs to the process, not to its pid. As long as that can be read nobody else has
/// had the pid since it was opened, so that what was found by the pid meanwhile is the
/// process's too.
class ProcessReader {
 public:
  /// ProcessFacts::identity of the process that has the pid; none when it can't tell.
  using IdentitySource = std::optional<std::uint64_t> (*)(std::int32_t pid);

  /// Identities come from `identitySource` alone; without one they are made from what a process
  /// runs and when it started.
  explicit ProcessReader(const ProcFs& proc, IdentitySource identitySource = nullptr);

  std::vector<std::int32_t> pids();
  [[nodiscard]] bool read(std::int32_t pid, ProcessFacts& facts);
  std::optional<std::uint64_t> footprint(std::int32_t pid);
  [[nodiscard]] bool confirm(std::int32_t pid, ProcessFacts& facts);
  std::optional<std::uint64_t> identity(std::int32_t pid);
  std::optional<ProcessState> state(std::int32_t pid);
  std::optional<std::uint32_t> effectiveUid(std::int32_t pid) const { return proc_.owner(pid); }

 private:
  /// What was learnt of a process and holds as long as it lives; its parent may end before it.
  struct Known {
    std::int32_t pid = 0;
    std::optional<ProcessStat> stat;
    bool isParentListed = false;  ///< at the time when `stat` was read
    std::optional<std::uint64_t> identity;
  };

  ProcessReader(const ProcFs& proc, IdentitySource identitySource, std::size_t filesToKeep);

  Known* find(std::int32_t pid);
  Known& known(std::int32_t pid);
  void learn(Known& process);
  bool isParentOutdated(const Known& process);
  bool nameFromExecutable(Known& process, std::string_view block, ProcessFacts& facts);
  std::uint64_t makeIdentity(const Known& process, const ProcessFacts& facts) const;

  const ProcFs& proc_;
  IdentitySource identitySource_;
  KeptFiles blocks_;  ///< where arguments are read from
  KeptFiles sizes_;   ///< where memory is read from
  FileReader block_;  ///< the arguments, of which views are taken
  FileReader small_;  ///< everything else
  std::uint64_t pageSize_;
  std::uint64_t tickNanoseconds_;
  std::vector<std::int32_t> pids_;  ///< of the last listing, ascending
  std::vector<Known> known_;        ///< by pid
  std::int32_t lastPid_ = 0;        ///< of the last read()
  std::uint32_t lastOwner_ = 0;     ///< its effective user
  std::string lastFolder_;          ///< where its memory stands: "", or of a thread "task/TID/"
  bool swapInUse_ = true;  ///< as of the last pids(); until then the dearer way is the right one
};

/// The one that reads /proc.
ProcessReader& processReader();

}  // namespace platform
