#pragma once

#include <string>

struct VordaProcess;

// Where a process belongs and works, as the system tells it when it is asked. "" where that is
// unknown, and where the pid is another process's by now.

/// Where somebody else's process belongs (unit, container), for its details: with that the user
/// can tell its owner which one is meant. "" for the user's own.
std::string placeOfOthers(const VordaProcess& process);

/// The folder in which one of the user's own processes works, as it may be shown: one harmless
/// line, credentials masked. "" for others'.
std::string folderOfOwn(const VordaProcess& process);
