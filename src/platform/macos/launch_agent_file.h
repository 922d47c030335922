#pragma once

#include <optional>
#include <string>

#include "platform/launch_agents.h"

namespace platform {

/// One launch agent's property list, in any of its encodings. A value of the wrong type counts as
/// missing. Where the label is missing, the file's name without its extension is the label. None
/// when the file holds no dictionary, is no file, or is larger than any launch agent's (1 MiB).
std::optional<LaunchAgentFile> readLaunchAgentFile(const std::string& path);

}  // namespace platform
