#pragma once

#include <string>
#include <vector>

#include "scanner/system_memory.h"
#include "scanner/vorda_process.h"

/// The tooltip of the program's icon. Lines are joined by "\n"; a process's name can't add a line.
namespace StatusToolTip {

/// From this percentage of time spent waiting for memory on, the tooltip mentions it.
inline constexpr double kLeastStalled = 1;

/// Before the first sample.
std::string beforeSample();

/// Names the largest of `processes` (of equal ones the first) if it has 512 MiB or more; else says
/// how often the processes are sampled. What there is to say of the memory follows.
std::string of(const std::vector<VordaProcess>& processes, double refreshInterval,
               const SystemMemory::Snapshot& sys);

/// What there is to say of the memory beyond how much is used: lines joined by "\n"; mostly "".
std::string memoryLines(const SystemMemory::Snapshot& sys);

}  // namespace StatusToolTip
