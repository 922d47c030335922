#pragma once

#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

#include "platform/linux/file_reader.h"
#include "platform/linux/procfs.h"

namespace platform {

/// One file of every process, kept open from one scan to the next, because opening and closing
/// costs as much as reading. The content is as fresh as that of a file opened now, because the
/// kernel generates it at each read. It is always the same process's: an open file belongs to the
/// process and not to the pid, and reading it fails once the process is gone, even if the pid has
/// been given to another.
class KeptFiles {
 public:
  /// `file` as in ProcFs::read. Keeps at most `most` files open, and the one read last. The files
  /// of further processes are opened at each read.
  KeptFiles(const ProcFs& proc, std::string_view file, std::size_t most)
      : proc_(proc), file_(file), most_(most) {}

  /// Closes the files of all processes but these. `pids` must be in ascending order.
  void keepOnly(const std::vector<std::int32_t>& pids);

  /// Reads the file of the process that has the pid now. `owner` is its effective user: when that
  /// changes the file is opened anew, because what may be read depends on it.
  std::optional<std::string_view> read(std::int32_t pid, std::uint32_t owner, FileReader& reader);

  /// Whether the file read last had been open since an earlier read. Then it is still the same
  /// process, and what we learnt of it still holds.
  bool wasKept() const { return lastWasKept_; }

  /// Whether the process of the file read last is still there; then no other process has had its
  /// pid since the file was opened. None when the file could not be opened.
  std::optional<bool> isStillThere() const;

 private:
  struct Kept {
    std::int32_t pid;
    std::uint32_t owner;
    FileDescriptor file;
  };

  std::vector<Kept>::iterator placeOf(std::int32_t pid);

  const ProcFs& proc_;
  std::string_view file_;
  std::size_t most_;
  std::vector<Kept> kept_;  ///< by pid
  std::size_t next_ = 0;    ///< behind the one that was asked last
  FileDescriptor unkept_;   ///< the file read last, if it may not be kept
  int last_ = -1;           ///< the descriptor of the file read last, kept or not
  bool lastWasKept_ = false;
};

/// How many files may be kept open all the time. A quarter of what the limit on open files allows,
/// and at least 64, is left for files that are opened for a moment. The limit itself is not
/// changed.
std::size_t filesToKeep();

}  // namespace platform
