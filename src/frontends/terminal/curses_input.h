#pragma once

#include <optional>

#include "frontends/terminal/screen.h"

namespace terminal {

/// Makes the curses library report keys and the mouse. curses must have been started.
void prepareKeys();

/// The next key or click that is waiting, if any. The caller fills in when it came.
std::optional<Input> readKey();

}  // namespace terminal
