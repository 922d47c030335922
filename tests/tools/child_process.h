#pragma once

#include <sys/types.h>

#include <optional>
#include <string>
#include <vector>

/// A process of the test's own. It is killed and reaped at the end of its scope, and dies
/// with the test program whatever happens to that.
class ChildProcess {
 public:
  /// Runs the program argv[0] and waits until it prints "ready" and is a tick of the kernel's clock
  /// old; a test that starts one that doesn't within a minute fails.
  explicit ChildProcess(std::vector<std::string> argv);
  ~ChildProcess();
  ChildProcess(const ChildProcess&) = delete;
  ChildProcess& operator=(const ChildProcess&) = delete;

  pid_t pid() const { return pid_; }

  /// Whether it has not ended: a zombie does not run.
  bool runs() const;

  /// Waits until it ends and reaps it: its wait status; none when it still runs after a
  /// minute.
  std::optional<int> wait();

  /// Waits until it has ended, and leaves it a zombie.
  void waitUntilZombie() const;

  /// Kills and reaps it now.
  void end();

 private:
  void start(std::vector<std::string> argv);

  pid_t pid_ = -1;
};

/// The command that plays a process; `options` as tests/tools/play_process.cpp lists them,
/// `arguments` what the process shall seem to have been started with (none: its own path).
std::vector<std::string> playProcess(std::vector<std::string> options,
                                     std::vector<std::string> arguments = {});
