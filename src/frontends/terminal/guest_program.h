#pragma once

#include <span>

namespace terminal {

class SignalPipe;

/// Runs the first of these programs that there is, without arguments, on the terminal, and waits
/// until it has ended; meanwhile it has the terminal, which the caller has given back. Ctrl-C and
/// Ctrl-Z are the guest's: with it this program is stopped and continued. What tells this program
/// to end is passed on to the guest, and stays to be answered. False when none could be started.
[[nodiscard]] bool runGuest(std::span<const char* const> programs, SignalPipe& signals,
                            bool& toldToEnd);

}  // namespace terminal
