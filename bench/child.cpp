#include "child.h"

#include <fcntl.h>
#include <pty.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/time.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <sstream>

#include "tools/argument_pointers.h"

namespace bench {
namespace {

constexpr winsize kWindow{.ws_row = 50, .ws_col = 200, .ws_xpixel = 0, .ws_ypixel = 0};

double seconds(const timeval& time) {
  return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) * 1e-6;
}

void discardOutput() {
  const int null = open("/dev/null", O_RDWR);
  for (const int file : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) dup2(null, file);
}

[[noreturn]] void execute(std::vector<std::string> argv,
                          const std::vector<std::string>& environment) {
  prctl(PR_SET_PDEATHSIG, SIGKILL);
  for (const auto& variable : environment) putenv(const_cast<char*>(variable.c_str()));
  execvp(argv.front().c_str(), argumentPointers(argv).data());
  _exit(127);
}

/// Runs a program to its end: its wait status.
int run(const std::vector<std::string>& argv, rusage& used) {
  const pid_t pid = fork();
  if (pid == 0) {
    discardOutput();
    execute(argv, {});
  }
  int status = 0;
  while (wait4(pid, &status, 0, &used) < 0 && errno == EINTR) {
  }
  return status;
}

}  // namespace

Child::Child(const std::vector<std::string>& argv, const std::vector<std::string>& environment,
             Output output) {
  pid_ = output == Output::terminal ? forkpty(&terminal_, nullptr, nullptr, &kWindow) : fork();
  if (pid_ < 0) {
    std::perror("fork");
    std::exit(1);
  }
  if (pid_ == 0) {
    if (output == Output::discarded) discardOutput();
    execute(argv, environment);
  }
  if (terminal_ >= 0) fcntl(terminal_, F_SETFL, O_NONBLOCK);
}

Child::~Child() {
  if (pid_ > 0) {
    kill(pid_, SIGKILL);
    waitpid(pid_, nullptr, 0);
  }
  if (terminal_ >= 0) close(terminal_);
}

bool Child::running() {
  if (pid_ > 0 && waitpid(pid_, nullptr, WNOHANG) == pid_) pid_ = -1;
  return pid_ > 0;
}

std::size_t Child::drain() const {
  std::size_t drained = 0;
  if (terminal_ < 0) return drained;
  char output[4096];
  for (ssize_t count = 0; (count = read(terminal_, output, sizeof output)) > 0;) {
    drained += static_cast<std::size_t>(count);
  }
  return drained;
}

void Child::type(const std::string& keys) const {
  if (write(terminal_, keys.data(), keys.size()) < 0) std::perror("terminal");
}

double cpuSecondsOfRun(const std::vector<std::string>& argv) {
  rusage used = {};
  run(argv, used);
  return seconds(used.ru_utime) + seconds(used.ru_stime);
}

bool succeeds(const std::vector<std::string>& argv) {
  rusage used = {};
  const int status = run(argv, used);
  return WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

bool isInstalled(const std::string& program) {
  if (program.empty()) return false;
  const char* path = std::getenv("PATH");
  std::istringstream folders(path == nullptr ? "" : path);
  for (std::string folder; std::getline(folders, folder, ':');) {
    if (access(folder.append("/").append(program).c_str(), X_OK) == 0) return true;
  }
  return program.find('/') != std::string::npos && access(program.c_str(), X_OK) == 0;
}

}  // namespace bench
