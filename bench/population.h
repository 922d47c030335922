#pragma once

#include <sys/types.h>

#include <vector>

#include "population_plan.h"

namespace bench {

/// Where this program's arguments stand, for Population; to be called first.
void rememberArguments(int argc, char** argv);

/// Idle processes to look at, alive as long as this object. They are the children of one
/// process of their own, their minder, which is in a process group of its own. When the bench
/// ends in whatever way, the kernel kills the minder, and with it the processes.
class Population {
 public:
  /// Starts the processes and waits until all of them idle. Those of the plan's threads that
  /// the machine has no room for are left out. Throws std::runtime_error when the processes
  /// can't be started; what they said about it stands on standard error.
  explicit Population(const std::vector<IdleProcess>& plan);
  ~Population();
  Population(const Population&) = delete;
  Population& operator=(const Population&) = delete;

 private:
  void end();

  pid_t minder_ = -1;
  int hold_ = -1;  ///< the minder ends its children when this is closed
};

}  // namespace bench
