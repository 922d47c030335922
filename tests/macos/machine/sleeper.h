#pragma once

#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <string>

/// A process that waits until it is ended.
class Sleeper {
 public:
  /// What it calls itself: its first argument.
  explicit Sleeper(std::string name = "/bin/sleep") {
    std::string duration = "600";
    char* arguments[] = {name.data(), duration.data(), nullptr};
    char* environment[] = {nullptr};
    if (posix_spawn(&pid_, "/bin/sleep", nullptr, nullptr, arguments, environment) != 0) pid_ = -1;
  }
  ~Sleeper() {
    if (pid_ > 0) kill(pid_, SIGKILL);
    reap();
  }
  Sleeper(const Sleeper&) = delete;
  Sleeper& operator=(const Sleeper&) = delete;

  pid_t pid() const { return pid_; }

  /// Waits for its end: the signal that ended it, or 0.
  int reap() { return endedBy(0); }
  /// The same, without waiting: 0 as well while it runs.
  int reapIfEnded() { return endedBy(WNOHANG); }

 private:
  int endedBy(int options) {
    int status = 0;
    if (pid_ <= 0 || waitpid(pid_, &status, options) != pid_) return 0;
    pid_ = -1;
    return WIFSIGNALED(status) ? WTERMSIG(status) : 0;
  }

  pid_t pid_ = -1;
};
