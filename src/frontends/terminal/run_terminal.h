#pragma once

#include "ui/alert.h"

namespace terminal {

/// Shows the menu on the terminal that standard input and output are, until the user quits,
/// the terminal is gone or the program is told to end: 0. When the terminal can't show it,
/// says why in one line on standard error: 1. `about` is what the "About" item shows.
[[nodiscard]] int runTerminal(Alert about);

}  // namespace terminal
