#include "platform/linux/file_reader.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>

namespace platform {
namespace {

constexpr std::size_t kFirstSize = 4 << 10;  // enough for most of what /proc tells
constexpr std::size_t kMostKept = 256 << 10;

}  // namespace

std::optional<std::string_view> FileReader::read(int fd) {
  if (bytes_.empty()) bytes_.resize(std::min(kFirstSize, limit_));

  std::size_t length = 0;
  for (;;) {
    const std::size_t room = bytes_.size() - length;
    const ssize_t count = pread(fd, bytes_.data() + length, room, static_cast<off_t>(length));
    if (count < 0) {
      if (errno == EINTR) continue;
      return std::nullopt;
    }
    length += static_cast<std::size_t>(count);
    if (static_cast<std::size_t>(count) < room || length == limit_) break;
    bytes_.resize(std::min(bytes_.size() * 2, limit_));
  }
  // Several long files in a row keep the long buffer; the first short one gives it back.
  if (length <= kFirstSize && bytes_.size() > kMostKept) {
    bytes_.resize(kFirstSize);
    bytes_.shrink_to_fit();
  }
  return std::string_view(bytes_.data(), length);
}

std::optional<std::string_view> readRegularFile(const char* path, FileReader& reader) {
  struct stat status = {};
  if (stat(path, &status) != 0 || !S_ISREG(status.st_mode)) return std::nullopt;
  // If it has just been replaced by a pipe, say, opening it must not block.
  const FileDescriptor file(open(path, O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
  return file.isOpen() ? reader.read(file.get()) : std::nullopt;
}

}  // namespace platform
