#pragma once

#include <cstddef>
#include <vector>

#include "scanner/vorda_process.h"

/// Some of a sample's processes, in an order of their own. Points into the sample.
using ProcessList = std::vector<const VordaProcess*>;

namespace ProcessLists {

/// All processes, in the sample's order.
ProcessList all(const std::vector<VordaProcess>& sample);

/// All processes, largest first; equals in the sample's order.
ProcessList byMemory(const std::vector<VordaProcess>& sample);

/// Those of one role, in the order of `list`.
ProcessList ofRole(const ProcessList& list, LabRole role);

/// The first `limit` entries, or all when there are fewer.
ProcessList first(const ProcessList& list, std::size_t limit);

/// The sum of memMB, in MiB.
double totalMB(const ProcessList& list);

}  // namespace ProcessLists
