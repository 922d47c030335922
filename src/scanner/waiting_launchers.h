#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "scanner/process_tree.h"
#include "scanner/vorda_process.h"

namespace ProcessScanner {

/// Of the processes that only wait for the program they have started (`waiting`, their pids), those
/// below which another of `processes` has the same role: a workload is one, however many carry it.
/// Below counts through processes without a role, and through others that wait; 16 generations.
std::vector<std::int32_t> launchersOfOthers(std::span<const VordaProcess> processes,
                                            std::span<const std::int32_t> waiting,
                                            const ProcessTree& tree);

}  // namespace ProcessScanner
