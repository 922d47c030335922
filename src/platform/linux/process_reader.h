#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "platform/linux/file_reader.h"
#include "platform/linux/kept_files.h"
#include "platform/linux/procfs.h"
#include "platform/processes.h"

namespace platform {

/// What platform/processes.h promises, from one proc file system, which must outlive it. For
/// one thread.
class ProcessReader {
 public:
  explicit ProcessReader(const ProcFs& proc);

  std::vector<std::int32_t> pids();
  bool read(std::int32_t pid, ProcessFacts& facts);
  std::optional<std::uint64_t> footprint(std::int32_t pid);
  std::optional<std::uint64_t> startIdentity(std::int32_t pid);
  std::optional<std::uint32_t> effectiveUid(std::int32_t pid) const { return proc_.owner(pid); }

 private:
  ProcessReader(const ProcFs& proc, std::size_t filesToKeep);

  const ProcFs& proc_;
  KeptFiles blocks_;  ///< where arguments are read from
  KeptFiles sizes_;   ///< where memory is read from
  FileReader block_;  ///< the arguments, of which views are taken
  FileReader small_;  ///< everything else
  std::uint64_t pageSize_;
  std::int32_t lastPid_ = 0;     ///< of the last read()
  std::uint32_t lastOwner_ = 0;  ///< and its effective user
  bool swapInUse_ = true;  ///< as of the last pids(); until then the dearer way is the right one
};

/// The one that reads /proc.
ProcessReader& processReader();

}  // namespace platform
