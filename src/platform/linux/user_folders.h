#pragma once

#include <filesystem>

namespace platform {

/// One of the user's base folders: the environment variable's value if that is an absolute path,
/// else `otherwise` in the home folder. Empty when the home folder is not known.
std::filesystem::path userFolder(const char* variable, const char* otherwise);

}  // namespace platform
