#pragma once

#include <optional>
#include <string_view>

#include "scanner/command_line.h"
#include "scanner/process_scanner.h"

namespace ProcessScanner {

/// The name of a tool for AI workloads that is in the table of products. To be tried before
/// training. `exe`: the last path component of the first argument, its case kept.
std::optional<FriendlyName> knownTool(std::string_view exe, const CommandLine& line);

/// The name of a helper process of the system or of Docker. To be tried after training.
std::optional<FriendlyName> knownHelper(std::string_view exe, const CommandLine& line);

}  // namespace ProcessScanner
