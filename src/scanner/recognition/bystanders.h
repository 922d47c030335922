#pragma once

#include <string_view>

namespace recognition {

/// Whether this program works on other programs' words: it searches, shows, edits, copies,
/// installs, compiles, tests or watches what others do, on this machine or another. Such a program
/// has no role, whatever it carries. `name`: normalized, of a program, a package or a module.
bool isBystander(std::string_view name);

}  // namespace recognition
