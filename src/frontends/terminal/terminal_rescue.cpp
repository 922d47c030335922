#include "frontends/terminal/terminal_rescue.h"

#include <unistd.h>

#include <algorithm>
#include <array>
#include <csignal>
#include <cstddef>

#include "frontends/terminal/held_errors.h"

namespace terminal {
namespace {

constexpr std::array kCrashes{SIGSEGV, SIGBUS, SIGFPE, SIGILL, SIGABRT, SIGQUIT, SIGSYS, SIGTRAP};

// All that the handler needs: it may not allocate, nor trust the stack.
struct State {
  volatile sig_atomic_t armed = 0;
  int terminal = -1;
  termios modes{};
  std::array<char, 512> reset{};
  std::size_t resetLength = 0;
  std::array<struct sigaction, kCrashes.size()> previous{};
};

State state;
alignas(16) std::array<char, 64UL * 1024> handlerStack;

void rescue(int signal) {
  if (state.armed != 0) {
    state.armed = 0;
    [[maybe_unused]] const auto written =
        write(state.terminal, state.reset.data(), state.resetLength);
    tcsetattr(state.terminal, TCSANOW, &state.modes);
    releaseHeldErrors();
  }
  for (std::size_t i = 0; i < kCrashes.size(); ++i) {
    if (kCrashes[i] == signal) sigaction(signal, &state.previous[i], nullptr);
  }
  raise(signal);
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
  for (std::size_t i = 0; i < kCrashes.size(); ++i) {
    sigaction(kCrashes[i], &action, &state.previous[i]);
  }
}

TerminalRescue::~TerminalRescue() {
  disarm();
  for (std::size_t i = 0; i < kCrashes.size(); ++i) {
    sigaction(kCrashes[i], &state.previous[i], nullptr);
  }
}

void TerminalRescue::arm() {
  state.armed = 1;
}

void TerminalRescue::disarm() {
  state.armed = 0;
}

}  // namespace terminal
