#pragma once

#include <sys/types.h>

#include <functional>
#include <set>
#include <string>
#include <vector>

/// menu_program.cpp, run and led: all of the program but its screen, on the real machine, and all
/// that each of its refreshes says. At the end of its scope it is expected to end orderly.
class LedProgram {
 public:
  /// What the program does before it starts, in a process of its own: taking another user,
  /// limits, a control group. False: it does not start.
  using Preparation = std::function<bool()>;
  explicit LedProgram(const Preparation& prepare = {});
  ~LedProgram();
  LedProgram(const LedProgram&) = delete;
  LedProgram& operator=(const LedProgram&) = delete;

  struct Answer {
    std::set<pid_t> pids;             ///< who is in the list
    std::vector<std::string> alerts;  ///< the titles of those that were shown meanwhile
    std::string menu;
    bool isWhole = false;  ///< false: the program is gone, or silent for a minute
  };
  Answer refresh() { return step("refresh"); }
  Answer keepQuitOf(pid_t pid) { return step("keep " + std::to_string(pid)); }
  Answer quitKept() { return step("quit"); }

  pid_t pid() const { return pid_; }

 private:
  Answer step(const std::string& line);
  bool readLine(std::string& line);

  pid_t pid_ = -1;
  int input_ = -1;
  int output_ = -1;
  std::string heard_;
};
