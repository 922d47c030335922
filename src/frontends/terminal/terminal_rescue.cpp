#include "frontends/terminal/terminal_rescue.h"

#include <unistd.h>

#include <algorithm>
#include <array>
#include <csignal>
#include <cstddef>

#include "frontends/terminal/held_stderr.h"

namespace terminal {
namespace {

/// One more than the highest signal's number.
constexpr std::size_t kSignals = NSIG;

// All that the handler needs: it may not allocate, nor trust the stack.
struct State {
  volatile sig_atomic_t armed = 0;
  int terminal = -1;
  termios modes{};
  std::array<char, 512> reset{};
  std::size_t resetLength = 0;
  std::array<bool, kSignals> taken{};  // both by the signal's number
  std::array<struct sigaction, kSignals> previous{};
};

State state;
alignas(16) std::array<char, 64UL * 1024> handlerStack;

void rescue(int signal) {
  if (state.armed != 0) {
    state.armed = 0;
    [[maybe_unused]] const auto written =
        write(state.terminal, state.reset.data(), state.resetLength);
    tcsetattr(state.terminal, TCSANOW, &state.modes);
    releaseHeldStderr();
  }
  sigaction(signal, &state.previous[static_cast<std::size_t>(signal)], nullptr);
  raise(signal);
}

bool isCrash(int signal) {
  constexpr std::array kCrashes{SIGSEGV, SIGBUS, SIGFPE, SIGILL, SIGABRT, SIGQUIT, SIGSYS, SIGTRAP};
  return std::ranges::find(kCrashes, signal) != kCrashes.end();
}

/// Whether the signal's default action is something else than to end the program.
bool isHarmless(int signal) {
  constexpr std::array kHarmless{SIGCHLD, SIGURG, SIGWINCH, SIGCONT, SIGTSTP, SIGTTIN, SIGTTOU};
  return std::ranges::find(kHarmless, signal) != kHarmless.end();
}

/// Whether this class handles the signal. It handles all crashes, and passes them on to a crash
/// reporter's handler afterwards; any other signal only where nobody handles it already. What is
/// ignored does not end the program: what a shell's script starts in the background ignores
/// SIGQUIT.
bool isOurs(int signal, const struct sigaction& present) {
  if (present.sa_handler == SIG_IGN) return false;
  return isCrash(signal) || (!isHarmless(signal) && present.sa_handler == SIG_DFL);
}

}  // namespace

TerminalRescue::TerminalRescue(int terminal, const termios& modes, const std::string& reset) {
  state.terminal = terminal;
  state.modes = modes;
  state.resetLength = std::min(reset.size(), state.reset.size());
  std::copy_n(reset.begin(), state.resetLength, state.reset.begin());

  // A stack of its own: the crash may be an overflow of the ordinary one.
  const stack_t stack{.ss_sp = handlerStack.data(), .ss_flags = 0, .ss_size = handlerStack.size()};
  sigaltstack(&stack, nullptr);
  struct sigaction action {};
  action.sa_handler = rescue;
  action.sa_flags = SA_ONSTACK | SA_NODEFER;
  for (int signal = 1; signal < NSIG; ++signal) {
    const auto index = static_cast<std::size_t>(signal);
    // Some signals can't be caught, and the C library keeps some to itself.
    if (sigaction(signal, nullptr, &state.previous[index]) != 0) continue;
    state.taken[index] =
        isOurs(signal, state.previous[index]) && sigaction(signal, &action, nullptr) == 0;
  }
}

TerminalRescue::~TerminalRescue() {
  disarm();
  for (int signal = 1; signal < NSIG; ++signal) {
    const auto index = static_cast<std::size_t>(signal);
    if (state.taken[index]) sigaction(signal, &state.previous[index], nullptr);
    state.taken[index] = false;
  }
}

void TerminalRescue::arm() {
  state.armed = 1;
}

void TerminalRescue::disarm() {
  state.armed = 0;
}

}  // namespace terminal
