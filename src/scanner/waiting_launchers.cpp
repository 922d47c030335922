#include "scanner/waiting_launchers.h"

#include <algorithm>
#include <unordered_map>

namespace ProcessScanner {

std::vector<std::int32_t> launchersOfOthers(std::span<const VordaProcess> processes,
                                            std::span<const std::int32_t> waiting,
                                            const ProcessTree& tree) {
  constexpr int kMostGenerations = 16;
  struct Workload {
    LabRole role;
    bool waits = false;
    bool isLaunchersOnly = false;
  };
  std::unordered_map<std::int32_t, Workload> workloads;
  for (const VordaProcess& process : processes) {
    if (process.labRole != LabRole::none) workloads.emplace(process.pid, Workload{process.labRole});
  }
  for (const std::int32_t pid : waiting) {
    const auto found = workloads.find(pid);
    if (found != workloads.end()) found->second.waits = true;
  }

  std::vector<std::int32_t> launchers;
  for (const auto& [pid, workload] : workloads) {
    auto above = tree.parentOf(pid);
    for (int i = 0; above && i < kMostGenerations; ++i, above = tree.parentOf(*above)) {
      const auto found = workloads.find(*above);
      if (found == workloads.end()) continue;
      if (!found->second.waits) break;
      if (found->second.role != workload.role) continue;
      if (!found->second.isLaunchersOnly && *above != pid) launchers.push_back(*above);
      found->second.isLaunchersOnly = true;
    }
  }
  std::ranges::sort(launchers);
  return launchers;
}

}  // namespace ProcessScanner
