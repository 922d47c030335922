#pragma once

#include <string>
#include <vector>

/// The command that runs `program` where /proc is an empty folder, in mounts of its own.
std::vector<std::string> withoutProc(const std::string& program);

/// Why that can't be done here; "" when it can.
std::string whyProcStays();
