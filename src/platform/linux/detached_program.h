#pragma once

#include <string>
#include <vector>

namespace platform {

/// The full path of a program: `name` itself when it holds a "/", else the first executable
/// file of that name in $PATH. "" when there is none.
std::string findProgram(const std::string& name);

/// Starts a program that has nothing to do with this one any more: a session of its own, no
/// terminal, none of our open files, and somebody else's to reap. `command` is not empty, and
/// no shell sees it; `folder` is where it starts ("": here). 0, or the error number.
[[nodiscard]] int startDetached(std::vector<std::string> command, const std::string& folder);

}  // namespace platform
