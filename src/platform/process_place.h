#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace platform {

/// Where a process belongs, as the system tells it now: "Unit: ollama.service", "Container: docker
/// 3f2a9c12d4e5". "" when that can't be told, or when the name holds more than letters, digits and
/// ":_.@-": nothing that could be pasted as a command.
std::string placeOfProcess(std::int32_t pid);

/// The folder in which a process works now, as an absolute path of at most 4 KiB; a folder that is
/// not there any more ends in " (deleted)". None where it is not known: of others' processes, where
/// the process is gone, where the system does not tell.
std::optional<std::string> workingFolderOfProcess(std::int32_t pid);

}  // namespace platform
