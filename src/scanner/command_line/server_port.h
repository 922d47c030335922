#pragma once

#include <string>
#include <string_view>

#include "scanner/command_line/invocation.h"
#include "scanner/lab_role.h"

namespace recognition {

/// Whether most servers take their port as the value of this option.
bool isPortOption(std::string_view word);

/// What a name ends with where its process listens: "  (:8000)", "" for none. The port is the value
/// of one of `options` (words with blanks between them), else of those by which most servers take
/// one; of an address its port. `role`: of the process, where it is known.
std::string portSuffix(const Invocation& invocation, std::string_view options,
                       LabRole role = LabRole::none);

}  // namespace recognition
