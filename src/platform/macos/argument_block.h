#pragma once

#include <string_view>

#include "platform/processes.h"

namespace platform {

/// Fills commandLine, arguments and isCut from the block that KERN_PROCARGS2 answers: the number of
/// arguments (32 bits), the executable's path, NULs, then the arguments and the environment
/// as strings that end with NULs. Any bytes will do; a block that says nothing gives nothing.
/// Runs of NULs are passed over, so where arguments are empty the strings of the environment
/// that follow are taken in their place.
void readArgumentBlock(std::string_view block, ProcessFacts& facts);

}  // namespace platform
