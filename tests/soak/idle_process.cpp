#include "soak/idle_process.h"

#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstdint>
#include <fstream>
#include <iterator>
#include <sstream>

#include "tools/argument_pointers.h"
#include "tools/forked.h"

namespace {

/// Only what may be done between fork and exec in a program of several threads.
[[noreturn]] void become(char* const* arguments, IdleProcess::OnTerm onTerm) {
  sigset_t blocked;
  sigemptyset(&blocked);
  if (onTerm == IdleProcess::OnTerm::remembers) sigaddset(&blocked, SIGTERM);
  sigprocmask(SIG_SETMASK, &blocked, nullptr);
  signal(SIGTERM, SIG_DFL);
  execv(IDLE_PROGRAM, arguments);
  _exit(127);
}

/// While it becomes the program it has none, or those of the test.
std::vector<std::string> argumentsOf(pid_t pid) {
  std::ifstream file("/proc/" + std::to_string(pid) + "/cmdline");
  std::vector<std::string> arguments;
  for (std::string argument; std::getline(file, argument, '\0');) arguments.push_back(argument);
  return arguments;
}

/// The lines of /proc/PID/status that say which signals wait for it, its threads' and its own.
std::uint64_t waitingSignals(pid_t pid) {
  std::ifstream status("/proc/" + std::to_string(pid) + "/status");
  std::uint64_t waiting = 0;
  for (std::string word; status >> word;) {
    if (word != "SigPnd:" && word != "ShdPnd:") continue;
    std::uint64_t signals = 0;
    status >> std::hex >> signals;
    waiting |= signals;
  }
  return waiting;
}

bool hasEnded(pid_t pid, siginfo_t& how) {
  return waitid(P_PID, static_cast<id_t>(pid), &how, WEXITED | WNOHANG | WNOWAIT) == 0 &&
         how.si_pid == pid;
}

}  // namespace

IdleProcess::IdleProcess(pid_t pid, std::vector<std::string> arguments, OnTerm onTerm) {
  const std::vector<char*> pointers = argumentPointers(arguments);
  pid_ = forkAs(pid);
  if (pid_ == 0) become(pointers.data(), onTerm);
  siginfo_t how = {};
  while (pid_ > 0 && argumentsOf(pid_) != arguments && !hasEnded(pid_, how)) usleep(50);
}

IdleProcess::~IdleProcess() {
  if (pid_ < 1) return;
  kill(pid_, SIGKILL);
  waitpid(pid_, nullptr, 0);
}

bool IdleProcess::wasSignalled() const {
  siginfo_t how = {};
  return hasEnded(pid_, how) || (waitingSignals(pid_) & (1U << (SIGTERM - 1))) != 0;
}

bool IdleProcess::endsBy(int signal) const {
  constexpr int kPatience = 60'000;  // milliseconds
  siginfo_t how = {};
  for (int i = 0; i < kPatience && !hasEnded(pid_, how); ++i) usleep(1000);
  return how.si_pid == pid_ && how.si_code == CLD_KILLED && how.si_status == signal;
}

unsigned long long IdleProcess::startTick() const {
  std::ifstream file("/proc/" + std::to_string(pid_) + "/stat");
  const std::string stat(std::istreambuf_iterator<char>(file), {});
  std::istringstream fields(stat.substr(stat.rfind(')') + 2));
  constexpr int kFirst = 3;
  constexpr int kStartTime = 22;
  std::string field;
  for (int i = kFirst; i < kStartTime; ++i) fields >> field;
  unsigned long long ticks = 0;
  fields >> ticks;
  return ticks;
}
