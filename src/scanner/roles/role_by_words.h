#pragma once

#include <string_view>

#include "scanner/lab_role.h"
#include "scanner/roles/searched_line.h"

namespace ProcessScanner {

/// The role of a process by the words anywhere in its line: a list of tests, of which the first
/// that fires decides. `exe`: the last path component of its executable's name, in lower case.
LabRole roleOf(std::string_view exe, const SearchedLine& line);

}  // namespace ProcessScanner
