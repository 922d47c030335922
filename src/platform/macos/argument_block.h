#pragma once

#include <string_view>

#include "platform/processes.h"

namespace platform {

/// Fills commandLine, arguments and isCut from the block that KERN_PROCARGS2 answers: the number
/// of arguments (32 bits), the executable's path, NULs, then the arguments and the environment as
/// strings that end with NULs. The bytes may be anything: from a block without arguments nothing
/// is filled in. Runs of NULs are skipped, so for each empty argument one string of the
/// environment, which follows, is taken for an argument.
void readArgumentBlock(std::string_view block, ProcessFacts& facts);

}  // namespace platform
