#pragma once

#include <cstddef>
#include <optional>
#include <string_view>
#include <vector>

namespace platform {

/// Reads files whole, one after the other, into one buffer. It grows for a long file, and is
/// handed back with the next short one: a command line of megabytes, seen once, doesn't cost
/// as much for good. A file's size is not asked: under /proc it says 0.
class FileReader {
 public:
  /// Of a file longer than `limit` bytes only so much is read.
  explicit FileReader(std::size_t limit) : limit_(limit) {}

  /// What `fd` holds from its start on, until the next call; none when it can't be read.
  /// A read that gives less than was asked for has reached the end: so it is with regular
  /// files and with /proc, and the second read would cost half as much as the first.
  std::optional<std::string_view> read(int fd);

 private:
  std::size_t limit_;
  std::vector<char> bytes_;
};

/// What the file at `path` holds, as long as `reader` reads nothing else; none when it can't be
/// read or is no regular file. Nothing else is opened: a pipe could block, a device act on it.
std::optional<std::string_view> readRegularFile(const char* path, FileReader& reader);

}  // namespace platform
