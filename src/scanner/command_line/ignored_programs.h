#pragma once

#include <string_view>

namespace recognition {

/// Whether the words in this program's command line are about something else than itself: it
/// searches, shows, edits, copies, installs, compiles, tests or watches that, on this machine or
/// another. Such a program has no role, whatever it names. `name`: normalized, of a program, a
/// package or a module.
bool isIgnoredProgram(std::string_view name);

}  // namespace recognition
