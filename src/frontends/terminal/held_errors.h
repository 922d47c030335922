#pragma once

namespace terminal {

/// Holds back what this program, or one that it starts, writes to standard error while the menu is
/// on the terminal: it would be drawn over the menu. Up to 64 KiB are kept; what comes after is
/// lost. Does nothing where standard error is not a terminal.
class [[nodiscard]] HeldErrors {
 public:
  HeldErrors();
  /// Writes to standard error what was held back.
  ~HeldErrors();
  HeldErrors(const HeldErrors&) = delete;
  HeldErrors& operator=(const HeldErrors&) = delete;
};

/// Does what the destructor does. Safe in a signal handler.
void releaseHeldErrors();

}  // namespace terminal
