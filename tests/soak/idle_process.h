#pragma once

#include <sys/types.h>

#include <string>
#include <vector>

/// A process that does nothing, with a pid and arguments of the test's choice. It is killed and
/// reaped at the end of its scope.
class IdleProcess {
 public:
  /// What becomes of a SIGTERM.
  enum class OnTerm {
    ends,      ///< it ends
    remembers  ///< it runs on, and the kernel keeps the signal for it
  };

  /// `pid`: that it shall have, 0 for any. Returns when its arguments are those.
  IdleProcess(pid_t pid, std::vector<std::string> arguments, OnTerm onTerm);
  ~IdleProcess();
  IdleProcess(const IdleProcess&) = delete;
  IdleProcess& operator=(const IdleProcess&) = delete;

  /// -1 when it could not be started: the pid was another's, or only others may choose.
  pid_t pid() const { return pid_; }

  /// Whether it was sent a SIGTERM that it remembers, or has ended.
  bool wasSignalled() const;

  /// Waits until it has ended by that signal; false when it has not within a minute.
  bool endsBy(int signal) const;

  /// When it was started, in clock ticks since the machine was.
  unsigned long long startTick() const;

 private:
  pid_t pid_ = -1;
};
