#pragma once

#include <termios.h>

#include <string>

namespace terminal {

/// Leaves the terminal usable when a signal ends the program: while armed, it sets the modes back
/// and writes the reset bytes, then the program dies by the same signal. This covers every signal
/// that ends a program, except those that can't be caught and those that are already ignored or
/// handled when this object is made. To be armed while the terminal is not in its ordinary state.
/// There is at most one.
class [[nodiscard]] TerminalRescue {
 public:
  /// `modes` are the ordinary ones; `reset` is at most 512 bytes long.
  TerminalRescue(int terminal, const termios& modes, const std::string& reset);
  ~TerminalRescue();
  TerminalRescue(const TerminalRescue&) = delete;
  TerminalRescue& operator=(const TerminalRescue&) = delete;

  void arm();
  void disarm();
};

}  // namespace terminal
