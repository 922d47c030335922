#pragma once

#include <span>
#include <string_view>

namespace ProcessScanner {

/// Whether what this process starts are works of their own: an interactive shell, a service
/// manager, a desktop's session, a multiplexer, a terminal or an IDE. A shell that runs a script
/// or `-c` is none: it is part of what it runs. `name` and `arguments` as in ProcessFacts.
bool isFamilyBorder(std::string_view name, std::span<const std::string_view> arguments);

}  // namespace ProcessScanner
