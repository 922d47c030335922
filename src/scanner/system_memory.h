#pragma once

namespace SystemMemory {

/// The machine's memory in GiB.
struct Snapshot {
  double usedGB = 0;
  double totalGB = 0;
  double freeGB = 0;
};

/// Never fails: what can't be read is 0.
Snapshot snapshot();

}  // namespace SystemMemory
