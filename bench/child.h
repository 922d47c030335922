#pragma once

#include <sys/types.h>

#include <string>
#include <vector>

namespace bench {

/// A program that the bench runs and looks at: killed and reaped at the end of its scope, and
/// dead when the bench is.
class Child {
 public:
  enum class Output { discarded, terminal };

  /// Starts argv[0], looked up in PATH. `environment`: "NAME=value" beside what the bench has.
  /// A terminal has 50 lines of 200 columns.
  Child(const std::vector<std::string>& argv, const std::vector<std::string>& environment,
        Output output);
  ~Child();
  Child(const Child&) = delete;
  Child& operator=(const Child&) = delete;

  pid_t pid() const { return pid_; }
  bool running();

  /// Throws away what it has written to its terminal, so that it never waits for a reader: how many
  /// bytes.
  std::size_t drain() const;

  /// Types text on its terminal.
  void type(const std::string& keys) const;

 private:
  pid_t pid_ = -1;
  int terminal_ = -1;
};

/// Runs a program to its end: the CPU seconds it took, with its start and its end.
double cpuSecondsOfRun(const std::vector<std::string>& argv);

/// Whether a program ends with status 0.
bool succeeds(const std::vector<std::string>& argv);

/// Whether PATH holds this program.
bool isInstalled(const std::string& program);

}  // namespace bench
