#pragma once

#include <cstddef>
#include <string_view>

#include "platform/processes.h"

namespace platform {

/// Starts the arguments anew, for texts of `size` bytes altogether.
void startArguments(ProcessFacts& facts, std::size_t size);

/// Adds an argument to the list and to the command line, unless it is empty or not UTF-8. One
/// that the command line has no room for is left out, with all that follow (isCut); only the
/// first is cut instead.
void appendArgument(std::string_view argument, ProcessFacts& facts);

}  // namespace platform
