#pragma once

#include "scanner/command_line.h"
#include "scanner/process_scanner.h"

namespace ProcessScanner {

/// The name of a process that trains a model.
FriendlyName trainingName(const CommandLine& line);

}  // namespace ProcessScanner
