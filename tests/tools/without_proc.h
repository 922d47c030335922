#pragma once

#include <string>
#include <vector>

/// The command that runs `program` where /proc is an empty folder, in mounts of its own.
std::vector<std::string> withoutProc(const std::string& program);

/// Whether this machine lets the test do that.
bool canHideProc();
