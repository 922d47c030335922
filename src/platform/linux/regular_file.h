#pragma once

#include <optional>
#include <string_view>

#include "platform/linux/file_reader.h"

namespace platform {

/// What the file at `path` holds, as long as `reader` reads nothing else; none when it can't be
/// read or is no regular file. Nothing else is opened: a pipe could block, a device act on it.
std::optional<std::string_view> readRegularFile(const char* path, FileReader& reader);

}  // namespace platform
