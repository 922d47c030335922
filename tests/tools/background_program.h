#pragma once

#include <sys/types.h>

#include <chrono>
#include <map>
#include <optional>
#include <string>
#include <vector>

/// A program that a test runs beside itself, as a user would: with an environment, and with
/// its output kept. It is killed and reaped at the end of its scope.
class BackgroundProgram {
 public:
  /// What differs from the test's own environment; none: the variable is unset.
  using Environment = std::map<std::string, std::optional<std::string>>;

  /// Starts argv[0], looked for in PATH.
  explicit BackgroundProgram(std::vector<std::string> argv, const Environment& changes = {});
  ~BackgroundProgram();
  BackgroundProgram(const BackgroundProgram&) = delete;
  BackgroundProgram& operator=(const BackgroundProgram&) = delete;

  /// Whether there is such a program.
  bool started() const { return pid_ > 0 || status_; }
  pid_t pid() const { return pid_; }

  /// The first line it writes to its standard output; "" when it ends without one, or takes
  /// more than a minute.
  std::string firstLine();

  /// All that it still writes to its standard output; what came within a minute.
  std::string output();

  /// Its wait status when it has ended; none while it runs.
  std::optional<int> poll();

  /// Waits until it ends: its wait status; none when it still runs after a minute.
  std::optional<int> wait();

  /// Waits for it, and says what it wrote to standard error.
  std::string errorOutput();

  void signal(int number) const;

 private:
  using Clock = std::chrono::steady_clock;

  /// The next byte of its output; none at its end, and when none comes in time.
  std::optional<char> nextByte(Clock::time_point deadline) const;

  pid_t pid_ = -1;
  std::optional<int> status_;  // once it has been reaped
  int output_ = -1;
  int error_ = -1;
};

/// Runs a program to its end and answers its exit status, -1 when there is no such program
/// or it took more than a minute.
int runProgram(std::vector<std::string> argv, const BackgroundProgram::Environment& changes = {});
