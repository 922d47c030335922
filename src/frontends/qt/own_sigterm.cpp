#include "frontends/qt/own_sigterm.h"

#include <unistd.h>

#include <csignal>

namespace {

void onSigterm(int signal, siginfo_t* info, void*) {
  if (info->si_code == SI_TKILL && info->si_pid == getpid()) return;
  std::signal(signal, SIG_DFL);
  raise(signal);
}

}  // namespace

void surviveOwnSigterm() {
  struct sigaction action {};
  action.sa_sigaction = onSigterm;
  action.sa_flags = SA_SIGINFO | SA_RESTART;
  sigemptyset(&action.sa_mask);
  sigaction(SIGTERM, &action, nullptr);
}
