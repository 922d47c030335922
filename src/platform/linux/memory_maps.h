#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

#include "platform/mapped_memory.h"

namespace platform {

/// The files in a text of /proc/PID/maps, the largest first, at most `most`: of each path how much
/// is mapped, touched or not. What is no file (the heap, shared memory, devices) is left out.
std::vector<MappedFile> filesInMaps(std::string_view maps, std::size_t most);

}  // namespace platform
