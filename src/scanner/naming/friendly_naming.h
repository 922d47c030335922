#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "scanner/lab_role.h"
#include "scanner/process_scanner.h"
#include "scanner/roles/searched_line.h"

/// What a process is called by the words in its command line. Each function is a list of tests, of
/// which the first that fires decides. `exe`: the last path component of its executable's name.
namespace ProcessScanner {

/// The name of a process of which the role is known. The role may come from another text than the
/// name: from the raw line, and the name from what of it may be shown.
FriendlyName nameOf(const SearchedLine& line, LabRole role, std::string_view fallback);

/// The same with the role that the line itself gives.
FriendlyName nameOf(const SearchedLine& line, std::string_view fallback);

/// The same for arguments that are not read yet.
FriendlyName friendlyName(std::span<const std::string> cmdline, LabRole role,
                          std::string_view fallback);

/// The name of a tool for AI workloads that is known by name; it goes before training:
/// tool_names.cpp.
std::optional<FriendlyName> knownTool(std::string_view exe, const SearchedLine& line);

/// The name of a process that trains a model: training_naming.cpp.
FriendlyName trainingName(const SearchedLine& line);

/// The name of a helper process of the system or of Docker; it goes after training:
/// tool_names.cpp.
std::optional<FriendlyName> knownHelper(std::string_view exe, const SearchedLine& line);

}  // namespace ProcessScanner
