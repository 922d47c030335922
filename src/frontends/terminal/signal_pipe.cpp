#include "frontends/terminal/signal_pipe.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>

namespace terminal {
namespace {

int writeEnd = -1;

/// A failed write does no harm: a full pipe already holds enough to wake the reader.
void passOn(int signal) {
  const int kept = errno;
  const auto byte = static_cast<unsigned char>(signal);
  if (signal != SIGPIPE) [[maybe_unused]]
    const auto written = write(writeEnd, &byte, 1);
  errno = kept;
}

struct sigaction passingOn() {
  struct sigaction action {};
  action.sa_handler = passOn;
  action.sa_flags = SA_RESTART;
  return action;
}

}  // namespace

SignalPipe::SignalPipe() {
  int ends[2] = {-1, -1};
  // Without a pipe nobody would learn of the signals, so they keep their default action.
  if (pipe2(ends, O_CLOEXEC | O_NONBLOCK) != 0) return;
  readEnd_ = ends[0];
  writeEnd = ends[1];
  const struct sigaction action = passingOn();
  for (std::size_t i = 0; i < kSignals.size(); ++i) {
    sigaction(kSignals[i], &action, &previous_[i]);
  }
}

SignalPipe::~SignalPipe() {
  if (readEnd_ < 0) return;
  for (std::size_t i = 0; i < kSignals.size(); ++i) {
    sigaction(kSignals[i], &previous_[i], nullptr);
  }
  close(readEnd_);
  close(writeEnd);
  writeEnd = -1;
}

std::optional<int> SignalPipe::next() {
  unsigned char byte = 0;
  return read(readEnd_, &byte, 1) == 1 ? std::optional<int>(byte) : std::nullopt;
}

void SignalPipe::stop() {
  struct sigaction byDefault {};
  byDefault.sa_handler = SIG_DFL;
  sigaction(SIGTSTP, &byDefault, nullptr);
  raise(SIGTSTP);  // returns when the program is continued
  const struct sigaction action = passingOn();
  sigaction(SIGTSTP, &action, nullptr);
}

}  // namespace terminal
