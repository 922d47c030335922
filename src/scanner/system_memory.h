#pragma once

namespace SystemMemory {

/// The machine's memory in GiB.
struct Snapshot {
  double usedGB = 0;   ///< held by processes and the kernel
  double totalGB = 0;  ///< installed
  double freeGB = 0;   ///< held by nobody
};

/// Never fails: what can't be read is 0.
Snapshot snapshot();

}  // namespace SystemMemory
