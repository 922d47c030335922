#pragma once

#include <array>
#include <climits>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/linux/file_reader.h"

namespace platform {

/// Reads the files of a proc file system, whose root is opened once. What can't be read counts as
/// missing: the process is gone, hidden (hidepid) or another user's.
class ProcFs {
 public:
  explicit ProcFs(const char* root);

  /// The numeric names, ascending, into `pids`; none when they can't be listed.
  void listPids(std::vector<std::int32_t>& pids) const;

  /// The effective user id of a process: the owner of its folder. Not of a file in it, because the
  /// files of a process that must not be dumped belong to root.
  std::optional<std::uint32_t> owner(std::int32_t pid) const;

  /// One file of a process, or one of the whole machine; the bytes live in `reader`.
  std::optional<std::string_view> read(std::int32_t pid, std::string_view file,
                                       FileReader& reader) const;
  std::optional<std::string_view> read(const char* file, FileReader& reader) const;

  /// Any thread of a process but the first; none when it has no other.
  std::optional<std::int32_t> anotherThread(std::int32_t pid) const;

  /// One file of a process, opened to be read.
  FileDescriptor open(std::int32_t pid, std::string_view file) const;

  /// Where the link /proc/PID/`link` leads; "" when unreadable. The bytes live in `path`.
  using Path = std::array<char, PATH_MAX>;
  std::string_view target(std::int32_t pid, std::string_view link, Path& path) const;

  /// Where the link /proc/PID/exe leads, without the " (deleted)" that the kernel adds when
  /// the file is not there any more; "" when unreadable. The bytes live in `path`. `link` is
  /// that of the process, or of one of its threads.
  std::string_view executable(std::int32_t pid, Path& path, std::string_view link = "exe") const;

 private:
  FileDescriptor open(const char* file) const;

  FileDescriptor root_;
};

/// /proc.
const ProcFs& systemProc();

/// Why no processes can be found there, in one line; "" when they can.
std::string problemOfProc(const char* root = "/proc");

}  // namespace platform
