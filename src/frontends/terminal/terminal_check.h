#pragma once

#include <string>

#include "frontends/terminal/color_depth.h"

namespace terminal {

/// What the terminal on standard output can do.
struct TerminalCheck {
  std::string problem;  ///< why it can't show a menu, in one line; "" when it can
  ColorDepth depth = ColorDepth::none;
  /// The compiled description to use in place of the installed one; "" for that one.
  std::string description;
};

/// Reads TERM and the description of the terminal that it names, COLORTERM and NO_COLOR.
TerminalCheck checkTerminal();

}  // namespace terminal
