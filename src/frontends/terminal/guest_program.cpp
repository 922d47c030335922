#include "frontends/terminal/guest_program.h"

#include <poll.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <csignal>

#include "frontends/terminal/signal_pipe.h"

namespace terminal {
namespace {

/// Its pid; 0 when there is no such program. It gets every signal's default action.
pid_t started(const char* program) {
  posix_spawnattr_t attributes;
  if (posix_spawnattr_init(&attributes) != 0) return 0;
  sigset_t all;
  sigfillset(&all);
  posix_spawnattr_setsigdefault(&attributes, &all);
  posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSIGDEF);
  std::array<char*, 2> arguments{const_cast<char*>(program), nullptr};
  pid_t pid = 0;
  const int error = posix_spawnp(&pid, program, nullptr, &attributes, arguments.data(), environ);
  posix_spawnattr_destroy(&attributes);
  return error == 0 ? pid : 0;
}

void waitForSignal(const SignalPipe& signals) {
  constexpr int kLookAgain = 50;  // milliseconds: nothing tells of the guest's end
  pollfd source{signals.descriptor(), POLLIN, 0};
  poll(&source, 1, kLookAgain);
}

}  // namespace

bool runGuest(std::span<const char* const> programs, SignalPipe& signals, bool& toldToEnd) {
  pid_t guest = 0;
  for (const char* program : programs) {
    if (guest == 0) guest = started(program);
  }
  if (guest == 0) return false;
  for (;;) {
    int status = 0;
    const pid_t changed = waitpid(guest, &status, WNOHANG | WUNTRACED);
    if (changed < 0 || (changed == guest && !WIFSTOPPED(status))) return true;
    if (changed == guest) {
      signals.stop();
      kill(guest, SIGCONT);
    }
    waitForSignal(signals);
    while (const auto signal = signals.next()) {
      if (*signal != SIGTERM && *signal != SIGHUP) continue;
      toldToEnd = true;
      kill(guest, *signal);
    }
  }
}

}  // namespace terminal
