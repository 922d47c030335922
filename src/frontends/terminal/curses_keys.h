#pragma once

#include <optional>

#include "frontends/terminal/input.h"

namespace terminal {

/// Makes the curses library tell keys and the mouse apart. It wants a terminal to be open.
void prepareKeys();

/// The next key or click that has come, if any. When it came is for the caller to say.
std::optional<Input> readKey();

}  // namespace terminal
