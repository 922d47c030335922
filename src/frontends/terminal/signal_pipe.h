#pragma once

#include <array>
#include <csignal>
#include <optional>

namespace terminal {

/// The signals that a terminal program has to answer, made readable: a descriptor to wait
/// for, and then the signals in their order. While it exists, SIGPIPE does nothing. There is
/// at most one.
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
