#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "platform/model_manifests.h"

namespace platform {

/// What readModelManifests tells, for whom the folder's file system may take any time.
std::vector<ModelManifest> manifestFiles(const std::string& modelFolder, std::uint32_t owner);

}  // namespace platform
