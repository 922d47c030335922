#pragma once

#include "frontends/terminal/terminal_front_end.h"
#include "ui/alerts.h"
#include "ui/status_bar_controller.h"

namespace terminal {

/// How long the program waits, in seconds; tests on a real clock wait less.
struct TerminalWaits {
  double hint = TerminalFrontEnd::kHintSeconds;
  InputLimits input = {};
  StatusBarController::Waits controller = {};
};

/// Shows the menu on the terminal that standard input and output are, until the user quits,
/// the terminal is gone or the program is told to end: 0. When the terminal can't show it,
/// says why in one line on standard error: 1. `about` is what the "About" item shows.
[[nodiscard]] int runTerminal(Alert about, const TerminalWaits& waits = {});

}  // namespace terminal
