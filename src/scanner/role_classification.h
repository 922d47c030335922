#pragma once

#include <string_view>

#include "scanner/command_line.h"
#include "scanner/lab_role.h"

namespace ProcessScanner {

/// classifyLabRole for a line that has already been read. `exe`: the last path component of the
/// executable's name, in lower case.
LabRole roleOf(std::string_view exe, const CommandLine& line);

}  // namespace ProcessScanner
