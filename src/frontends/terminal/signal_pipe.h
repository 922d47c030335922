#pragma once

#include <array>
#include <csignal>
#include <optional>

namespace terminal {

/// Turns the signals that a terminal program has to answer into input: descriptor() becomes
/// readable when one comes, and next() returns them in their order. While it exists, SIGPIPE is
/// ignored. There is at most one.
class [[nodiscard]] SignalPipe {
 public:
  SignalPipe();
  ~SignalPipe();
  SignalPipe(const SignalPipe&) = delete;
  SignalPipe& operator=(const SignalPipe&) = delete;

  int descriptor() const { return readEnd_; }
  std::optional<int> next();

  /// Stops the program, as the signal (SIGTSTP) does by default, until it is continued.
  void stop();

  static constexpr std::array kSignals{SIGHUP,   SIGINT,  SIGTERM, SIGTSTP,
                                       SIGWINCH, SIGCONT, SIGPIPE};

 private:
  int readEnd_ = -1;
  std::array<struct sigaction, kSignals.size()> previous_{};
};

}  // namespace terminal
