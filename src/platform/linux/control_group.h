#pragma once

#include <string>
#include <string_view>

namespace platform {

/// What /proc/PID/cgroup says of where a process belongs, in the form of placeOfProcess(): the
/// innermost container, else the innermost service or scope. "" for none with a harmless name.
std::string placeInControlGroups(std::string_view cgroup);

}  // namespace platform
