#pragma once

#include <string>
#include <vector>

#include "scanner/vorda_process.h"

/// The tooltip of the program's icon. Lines are joined by "\n"; a process's name can't add a line.
namespace StatusToolTip {

/// Before the first sample.
std::string beforeSample();

/// Names the largest of `processes` (of equal ones the first) if it has 512 MiB or more; else says
/// how often the processes are sampled.
std::string of(const std::vector<VordaProcess>& processes, double refreshInterval);

}  // namespace StatusToolTip
