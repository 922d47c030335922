#pragma once

#include <string_view>

#include "scanner/command_line.h"
#include "scanner/process_scanner.h"

namespace ProcessScanner {

/// As friendlyName, for a line that has already been read and a role that is known. The role may
/// come from the raw line and `line` from the masked one.
FriendlyName nameOf(const CommandLine& line, LabRole role, std::string_view fallback);

/// The same with the role that the line itself has.
FriendlyName nameOf(const CommandLine& line, std::string_view fallback);

/// friendlyName for a process whose role is known.
FriendlyName friendlyName(std::span<const std::string> cmdline, LabRole role,
                          std::string_view fallback);

}  // namespace ProcessScanner
