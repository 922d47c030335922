#pragma once

namespace terminal {

/// Keeps back what is written to standard error while the menu is on the terminal, by this
/// program or by one that it starts: it would tear the picture apart. Up to 64 KiB are kept;
/// what comes after is lost. Does nothing where standard error is not a terminal.
class [[nodiscard]] HeldErrors {
 public:
  HeldErrors();
  /// Shows what was kept back.
  ~HeldErrors();
  HeldErrors(const HeldErrors&) = delete;
  HeldErrors& operator=(const HeldErrors&) = delete;
};

/// As the destructor; safe in a signal handler.
void releaseHeldErrors();

}  // namespace terminal
