#pragma once

#include <sys/types.h>

#include <cstddef>

// What a process holds of the machine, and what it gets of it.

/// Its memory of its own, in KiB (RssAnon).
long anonymousMemory(pid_t pid);

/// How many files it has open, but for those of other processes' command lines and memory, of
/// which it keeps some open on purpose.
std::size_t openFiles(pid_t pid);

/// For how many seconds it has been ready to run, but the machine ran others; 0 when unknown.
double secondsWithoutCpu(pid_t pid);
