#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "platform/model_manifests.h"

namespace platform {

/// Reads what readModelManifests returns, waiting for the file system as long as it takes; for a
/// thread of its own.
std::vector<ModelManifest> manifestFiles(const std::string& modelFolder, std::uint32_t owner);

}  // namespace platform
