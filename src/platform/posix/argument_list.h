#pragma once

#include <cstddef>
#include <string_view>

#include "platform/processes.h"

namespace platform {

/// Clears the arguments, and makes room for texts of `size` bytes altogether.
void startArguments(ProcessFacts& facts, std::size_t size);

/// Adds an argument to the list and to the command line, unless it is empty or not UTF-8. When the
/// command line has no room for it, it and all that follow are left out (isCut); only the first
/// argument is cut instead.
void appendArgument(std::string_view argument, ProcessFacts& facts);

}  // namespace platform
