#pragma once

#include <string>
#include <vector>

#include "tools/temp_folder.h"

/// What a program asks of the kernel, as strace(1) writes it down.
class SystemCallTrace {
 public:
  explicit SystemCallTrace(const std::string& program);

  /// Why nothing can be traced here; "" when it can.
  static std::string reason();

  /// What to start in the program's place.
  std::string program() const { return folder_ / "traced"; }

  /// All calls so far, one a line.
  std::vector<std::string> calls() const;

  /// Those that a program has no need for which only looks, shows and never follows where
  /// others lead:
  /// - opening anything to be written to but a terminal and /dev/null; changing any file;
  /// - starting a program or a process, listening, talking to anything but local sockets;
  /// - signals, other processes' memory, capabilities, other users;
  /// - following a link in a process's folder; reading any link there but that to its program.
  std::vector<std::string> beyondLeastPower() const;

 private:
  TempFolder folder_;
};
