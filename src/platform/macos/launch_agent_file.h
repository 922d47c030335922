#pragma once

#include <optional>
#include <string>

#include "platform/launch_agents.h"

namespace platform {

/// One launch agent's property list, in any of its encodings. A value of the wrong type is as if it
/// were not there; without a label the file's name, less its extension, is one. None when the file
/// holds no dictionary, is no file, or is larger than any launch agent's (1 MiB).
std::optional<LaunchAgentFile> readLaunchAgentFile(const std::string& path);

}  // namespace platform
