#pragma once

#include <sys/types.h>

#include <string>

#include "soak/call_gate.h"

/// What a system call asks about, as far as that is a process: named by its pid, by a path in
/// /proc, or by what is open of it.
struct CallSubject {
  pid_t pid = 0;     ///< 0: no process
  std::string file;  ///< in its folder: "stat"; "" for the folder itself, "pidfd" for a pidfd
};

/// The caller waits meanwhile, and sees the same /proc as this process.
CallSubject subjectOf(const CallGate::Call& call);

/// As a line for people: "openat of 4711/stat".
std::string described(const CallGate::Call& call, const CallSubject& subject);
