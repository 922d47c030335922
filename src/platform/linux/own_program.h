#pragma once

#include <string>

namespace platform {

/// Where another program of ours is: beside this one, or in the folder for programs that others
/// start (libexec/vorda). "" when it is not installed.
std::string findOwnProgram(const std::string& name);

}  // namespace platform
