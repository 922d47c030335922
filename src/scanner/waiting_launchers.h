#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "scanner/process_tree.h"
#include "scanner/vorda_process.h"

namespace ProcessScanner {

/// Tells which launchers leave their role to what they have started. Keeps its buffers.
class WaitingLaunchers {
 public:
  /// Of the processes that only wait for the program they have started (`waiting`, their pids),
  /// those below which another of `processes` has the same role: a workload is one, however many
  /// carry it. Below counts through processes without a role, and through others that wait; 16
  /// generations. Ascending; until the next call.
  std::span<const std::int32_t> ofOthers(std::span<const VordaProcess> processes,
                                         std::span<const std::int32_t> waiting,
                                         const ProcessTree& tree);

 private:
  struct Workload {
    std::int32_t pid = 0;
    LabRole role = LabRole::none;
    bool waits = false;
    bool isLaunchersOnly = false;
  };
  Workload* find(std::int32_t pid);

  std::vector<Workload> workloads_;  ///< by pid
  std::vector<std::int32_t> launchers_;
};

}  // namespace ProcessScanner
