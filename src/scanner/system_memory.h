#pragma once

#include <optional>

#include "platform/memory.h"

namespace SystemMemory {

/// The machine's memory in GiB or, in a container with a limit to all that is listed, the limit.
struct Snapshot {
  double usedGB = 0;   ///< held by processes and the kernel
  double totalGB = 0;  ///< installed, or the limit
  double freeGB = 0;   ///< held by nobody
  bool isLimit = false;
  std::optional<double> availableGB = {};  ///< still to be had; none where the system doesn't tell
  std::optional<double> swappedGB = {};    ///< swap in use; none where the system doesn't tell
  /// How long processes wait for memory: those under the limit where there is one, else all of the
  /// machine's. None where the system doesn't tell.
  std::optional<platform::MemoryStalls> stalls = {};
};

/// Never fails: what can't be read is 0.
Snapshot snapshot();

}  // namespace SystemMemory
