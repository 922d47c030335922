#pragma once

namespace terminal {

/// Holds back what this program, or one that it starts, writes to standard error while the menu is
/// on the terminal: it would be drawn over the menu. Up to 64 KiB are kept; what comes after is
/// lost. Does nothing where standard error is not a terminal.
class [[nodiscard]] HeldStderr {
 public:
  HeldStderr();
  /// Writes to standard error what was held back.
  ~HeldStderr();
  HeldStderr(const HeldStderr&) = delete;
  HeldStderr& operator=(const HeldStderr&) = delete;
};

/// Does what the destructor does. Safe in a signal handler.
void releaseHeldStderr();

}  // namespace terminal
