#pragma once

#include <termios.h>

#include <string>

namespace terminal {

/// Leaves the terminal usable when a signal ends the program: its modes are set back and these
/// bytes are written to it, then the program dies by the same signal. That holds for every
/// signal that would end it, but for those that cannot be caught, and those that somebody
/// ignores or answers when this is made. Armed while the terminal is not in its ordinary state.
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
