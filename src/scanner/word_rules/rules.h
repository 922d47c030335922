#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "scanner/lab_role.h"
#include "scanner/process_scanner.h"
#include "scanner/word_rules/command_line.h"

/// The rules by which a process is recognised and named, over a command line that is read already
/// (command_line.h). Each is a list of tests in the file that is named after it; the first one
/// that fires decides. `exe` is the last path component of the executable's name.
namespace ProcessScanner {

// What a process is. `exe` is in lower case here.

/// Its role by the words anywhere in its line: role_by_words.cpp.
LabRole roleOf(std::string_view exe, const CommandLine& line);

// What it is called. `exe` keeps its case here.

/// The name of a process of which the role is known: friendly_naming.cpp. The role may come from
/// another text than the name: from the raw line, and the name from what of it may be shown.
FriendlyName nameOf(const CommandLine& line, LabRole role, std::string_view fallback);

/// The same with the role that the line itself gives.
FriendlyName nameOf(const CommandLine& line, std::string_view fallback);

/// The same for arguments that are not read yet.
FriendlyName friendlyName(std::span<const std::string> cmdline, LabRole role,
                          std::string_view fallback);

/// The name of a tool for AI workloads that is known by name; it goes before training:
/// tool_names.cpp.
std::optional<FriendlyName> knownTool(std::string_view exe, const CommandLine& line);

/// The name of a process that trains a model: training_naming.cpp.
FriendlyName trainingName(const CommandLine& line);

/// The name of a helper process of the system or of Docker; it goes after training:
/// tool_names.cpp.
std::optional<FriendlyName> knownHelper(std::string_view exe, const CommandLine& line);

}  // namespace ProcessScanner
