#pragma once

#include <string_view>

#include "platform/processes.h"

namespace platform {

/// What tells which program a process runs when its arguments do not.
struct ProcessOrigin {
  std::string_view executable;  ///< its path; "" when unreadable
  std::string_view comm;        ///< the kernel's name for it, cut at 15 bytes; ignored
                                ///< where there is a path
};

/// Fills name, commandLine, arguments and isCut from what /proc/PID/cmdline holds: strings that end
/// with NULs, or one title that the process wrote over them, in which blanks stand for the
/// NULs. A title is one when the block holds a single string, and the first word of that is
/// the program: its path, or its name; it is then cut at blanks. So is one that begins with
/// the name and a ":" if it holds a "/" ("sshd: ada@pts/0"); without one it is a name for
/// people and stays whole ("nginx: worker process"). Blanks that pad a single string are
/// dropped. A block longer than kLongestCommandLine is taken up to the last argument that ends
/// within it; if none does, as far as it goes.
/// The name is empty when there are neither arguments nor an executable.
void readArguments(std::string_view block, const ProcessOrigin& origin, ProcessFacts& facts);

/// Whether the result depends on the origin. If not, `facts` that were read without one are right,
/// and the two reads that find the origin out are saved.
bool needsOrigin(std::string_view block, const ProcessFacts& facts);

/// The title, when all that the origin decides is whether it is one argument or several; else "".
std::string_view openTitle(std::string_view block);

}  // namespace platform
