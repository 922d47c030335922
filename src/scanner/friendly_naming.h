#pragma once

#include <string_view>

#include "scanner/command_line.h"
#include "scanner/process_scanner.h"

namespace ProcessScanner {

/// friendlyName for a line that is read already.
FriendlyName nameOf(const CommandLine& line, std::string_view fallback);

}  // namespace ProcessScanner
