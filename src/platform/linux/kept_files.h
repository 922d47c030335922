#pragma once

#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

#include "platform/linux/file_descriptor.h"
#include "platform/linux/file_reader.h"
#include "platform/linux/procfs.h"

namespace platform {

/// One file of every process, kept open from one scan to the next, because opening and closing
/// costs as much as reading. What is read is as fresh as from a file opened now: the kernel
/// writes it at each read. And it is of the same process: an open file belongs to the process,
/// not to its pid, and gives an error once that is gone, whoever has the pid then.
class KeptFiles {
 public:
  /// `file` as in ProcFs::read. Never keeps more than `most` open, and the one read last; the
  /// files of further processes are opened at each read.
  KeptFiles(const ProcFs& proc, std::string_view file, std::size_t most)
      : proc_(proc), file_(file), most_(most) {}

  /// Closes the files of all processes but these. `pids` ascend.
  void keepOnly(const std::vector<std::int32_t>& pids);

  /// The file of the process that has the pid now. `owner`: its effective user, on whom it
  /// depends what may be read.
  std::optional<std::string_view> read(std::int32_t pid, std::uint32_t owner, FileReader& reader);

  /// Of the file read last: whether it had been open since an earlier read. What was learnt of
  /// its process then still holds.
  bool wasKept() const { return lastWasKept_; }

  /// Of the file read last: whether its process is still there, so that nobody else has had
  /// its pid since the file was opened. None when the file could not be opened at all.
  std::optional<bool> isStillThere() const;

 private:
  struct Kept {
    std::int32_t pid;
    std::uint32_t owner;
    FileDescriptor file;
  };

  const ProcFs& proc_;
  std::string_view file_;
  std::size_t most_;
  std::vector<Kept> kept_;  ///< by pid
  FileDescriptor unkept_;   ///< the last read's, when that may not be kept
  int last_ = -1;           ///< the last read's descriptor, of either
  bool lastWasKept_ = false;
};

/// How many files a program may keep open all the time without getting in the way of those that
/// it opens for a moment: for these, a quarter of what the limit allows is left, and never less
/// than 64. The limit stays as it is.
std::size_t filesToKeep();

}  // namespace platform
