#pragma once

#include <cstdint>
#include <string>

namespace platform {

/// Where a process belongs, as the system tells it now: "Unit: ollama.service", "Container: docker
/// 3f2a9c12d4e5". "" when that can't be told, or when the name holds more than letters, digits and
/// ":_.@-": nothing that could be pasted as a command.
std::string placeOfProcess(std::int32_t pid);

}  // namespace platform
