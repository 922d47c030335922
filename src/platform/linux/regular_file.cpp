#include "platform/linux/regular_file.h"

#include <fcntl.h>
#include <sys/stat.h>

#include "platform/linux/file_descriptor.h"

namespace platform {

std::optional<std::string_view> readRegularFile(const char* path, FileReader& reader) {
  struct stat status = {};
  if (stat(path, &status) != 0 || !S_ISREG(status.st_mode)) return std::nullopt;
  // Should it become something else just now, opening it does not wait either.
  const FileDescriptor file(open(path, O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
  return file.isOpen() ? reader.read(file.get()) : std::nullopt;
}

}  // namespace platform
