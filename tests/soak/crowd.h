#pragma once

#include <sys/types.h>

#include <map>
#include <string>
#include <vector>

#include "tools/temp_folder.h"

/// A crowd of processes (crowd_program.cpp lists the kinds), there until the end of its scope.
/// That none of the steady ones was ended by somebody else is expected at its end.
class Crowd {
 public:
  explicit Crowd(const std::map<std::string, int>& kinds);
  ~Crowd();
  Crowd(const Crowd&) = delete;
  Crowd& operator=(const Crowd&) = delete;

  /// Who has to be in the list as long as the crowd is there; empty when it can't be there.
  const std::vector<pid_t>& steady() const { return steady_; }

 private:
  std::string readLine() const;

  TempFolder folder_;
  std::vector<pid_t> steady_;
  pid_t pid_ = -1;
  int input_ = -1;
  int output_ = -1;
};
