#pragma once

#include <string>
#include <vector>

namespace platform {

/// The full path of a program: `name` itself when it holds a "/", else the first executable
/// file of that name in $PATH. "" when there is none.
std::string findProgram(const std::string& name);

/// Starts a program that is independent of this one: in a session of its own, without a terminal
/// or our open files, and not as our child. `command` must not be empty, and is not passed to a
/// shell; `folder` is where it starts ("": here). Returns 0 or the error number.
[[nodiscard]] int startDetached(std::vector<std::string> command, const std::string& folder);

}  // namespace platform
