#pragma once

#include <string>
#include <vector>

#include "scanner/vorda_process.h"

/// What the program's icon says when the pointer rests on it. Lines are joined by "\n"; no
/// process's name makes one of its own.
namespace StatusToolTip {

/// Before the first sample.
std::string beforeSample();

/// Names the largest of `processes`, the first of equals, when it holds 512 MiB or more; else
/// says every how many seconds they are looked at.
std::string of(const std::vector<VordaProcess>& processes, double refreshInterval);

}  // namespace StatusToolTip
