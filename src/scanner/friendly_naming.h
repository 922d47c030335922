#pragma once

#include <string_view>

#include "scanner/command_line.h"
#include "scanner/process_scanner.h"

namespace ProcessScanner {

/// friendlyName for a line that is read already, and of which the role is known. The two may
/// come from different texts: the role from the raw line, the name from what of it may be shown.
FriendlyName nameOf(const CommandLine& line, LabRole role, std::string_view fallback);

/// The same with the role that the line itself gives.
FriendlyName nameOf(const CommandLine& line, std::string_view fallback);

/// friendlyName for a process whose role is known.
FriendlyName friendlyName(std::span<const std::string> cmdline, LabRole role,
                          std::string_view fallback);

}  // namespace ProcessScanner
