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
  /// `waiting`: the pids of processes that only wait for the program that they have started. Of
  /// these, those that have a process with the same role below them: the workload counts once,
  /// there. Between the two may be processes without a role and others that wait, 16 generations
  /// at most. Pids, ascending; valid until the next call.
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
