#pragma once

#include <vector>

#include "scanner/vorda_process.h"

namespace ProcessScanner {

/// The order of a scan: training first, then inference, agent, none; larger first within a
/// role; equals stay as they are.
void sortByRoleAndMemory(std::vector<VordaProcess>& processes);

}  // namespace ProcessScanner
