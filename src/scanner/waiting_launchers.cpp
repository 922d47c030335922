#include "scanner/waiting_launchers.h"

#include <algorithm>

namespace ProcessScanner {

std::span<const std::int32_t> WaitingLaunchers::ofOthers(std::span<const VordaProcess> processes,
                                                         std::span<const std::int32_t> waiting,
                                                         const ProcessTree& tree) {
  constexpr int kMostGenerations = 16;
  workloads_.clear();
  for (const VordaProcess& process : processes) {
    if (process.labRole != LabRole::none) workloads_.push_back({process.pid, process.labRole});
  }
  std::ranges::sort(workloads_, {}, &Workload::pid);
  for (const std::int32_t pid : waiting) {
    if (Workload* const workload = find(pid)) workload->waits = true;
  }

  launchers_.clear();
  for (const Workload& workload : workloads_) {
    auto above = tree.parentOf(workload.pid);
    for (int i = 0; above && i < kMostGenerations; ++i, above = tree.parentOf(*above)) {
      Workload* const launcher = find(*above);
      if (launcher == nullptr) continue;
      if (!launcher->waits) break;
      if (launcher->role != workload.role) continue;
      if (!launcher->isLaunchersOnly && *above != workload.pid) launchers_.push_back(*above);
      launcher->isLaunchersOnly = true;
    }
  }
  std::ranges::sort(launchers_);
  return launchers_;
}

WaitingLaunchers::Workload* WaitingLaunchers::find(std::int32_t pid) {
  const auto place = std::ranges::lower_bound(workloads_, pid, {}, &Workload::pid);
  return place != workloads_.end() && place->pid == pid ? &*place : nullptr;
}

}  // namespace ProcessScanner
