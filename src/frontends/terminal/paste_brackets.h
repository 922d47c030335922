#pragma once

#include <string>

namespace terminal {

/// The bytes after which the terminal that curses has opened puts what is pasted in brackets (or
/// does so no more), so that it can be told from keys. Empty for one that would show them.
std::string pasteBrackets(bool on);

}  // namespace terminal
