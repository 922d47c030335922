#pragma once

#include <cstddef>
#include <vector>

#include "scanner/vorda_process.h"

namespace ProcessScanner {

/// The order of a scan: training first, then inference, agent, none; larger first within a role;
/// equals stay as they are. `order`: a buffer that keeps its capacity from one call to the next.
///@{
void sortByRoleAndMemory(std::vector<VordaProcess>& processes);
void sortByRoleAndMemory(std::vector<VordaProcess>& processes, std::vector<std::size_t>& order);
///@}

}  // namespace ProcessScanner
