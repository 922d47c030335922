#pragma once

#include <unistd.h>

#include <cstddef>
#include <optional>
#include <string_view>
#include <utility>
#include <vector>

namespace platform {

/// An open file descriptor, which is closed at the end of its scope. Below 0: none.
class [[nodiscard]] FileDescriptor {
 public:
  explicit FileDescriptor(int fd = -1) : fd_(fd) {}
  ~FileDescriptor() {
    if (fd_ >= 0) close(fd_);
  }
  FileDescriptor(FileDescriptor&& other) noexcept : fd_(std::exchange(other.fd_, -1)) {}
  FileDescriptor& operator=(FileDescriptor&& other) noexcept {
    std::swap(fd_, other.fd_);
    return *this;
  }

  int get() const { return fd_; }
  bool isOpen() const { return fd_ >= 0; }
  int release() { return std::exchange(fd_, -1); }

 private:
  int fd_;
};

/// Reads files whole, one after the other, into one buffer. The buffer grows for a long file and
/// shrinks again with the next short one, so that one huge command line does not take memory for
/// good. A file's size is not asked for, because under /proc it is always 0.
class FileReader {
 public:
  /// At most `limit` bytes of a file are read.
  explicit FileReader(std::size_t limit) : limit_(limit) {}

  /// The content of `fd` from its start on, valid until the next call; none when it can't be read.
  /// A read that returns less than was asked for counts as the end: that holds for regular files
  /// and for /proc, and saves a second read, which costs half as much as the first.
  std::optional<std::string_view> read(int fd);

 private:
  std::size_t limit_;
  std::vector<char> bytes_;
};

/// The content of the file at `path`, valid until `reader` reads something else; none when it
/// can't be read or is no regular file. Only regular files are opened: a pipe could block, and
/// opening a device can have effects.
std::optional<std::string_view> readRegularFile(const char* path, FileReader& reader);

}  // namespace platform
