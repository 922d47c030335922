#pragma once

#include <filesystem>

namespace platform {

/// One of the user's base folders: what the environment variable says when that is an absolute
/// path, else `otherwise` in the home folder. Empty when there is no home either.
std::filesystem::path userFolder(const char* variable, const char* otherwise);

}  // namespace platform
