#pragma once

#include <optional>

namespace platform {

/// How the memory is used. Caches that the kernel would give up at once are in neither figure.
struct MemoryInUse {
  double usedBytes = 0;  ///< held by processes and the kernel
  double freeBytes = 0;  ///< held by nobody
};

/// For how much of the last 10 seconds processes could not go on because memory was short, in
/// percent.
struct MemoryStalls {
  double some = 0;  ///< at least one of them
  double full = 0;  ///< all that had something to do

  bool operator==(const MemoryStalls&) const = default;
};

/// A limit to what the processes of a container may hold together.
struct MemoryLimit {
  double totalBytes = 0;                    ///< the limit: above 0, and less than is installed
  MemoryInUse inUse;                        ///< what they hold of it
  std::optional<double> swappedBytes = {};  ///< what they have in swap
  std::optional<MemoryStalls> stalls = {};  ///< how long they wait
};

/// What the system tells of its memory.
struct MemoryReading {
  double totalBytes = 0;             ///< installed memory; 0 when unknown
  std::optional<MemoryInUse> inUse;  ///< empty when the system gives no counts
  /// What processes could still get without swapping; empty where that is not told (macOS).
  std::optional<double> availableBytes = {};
  std::optional<double> swappedBytes = {};  ///< swap in use; empty where that is not told (macOS)
  std::optional<MemoryStalls> stalls = {};  ///< empty where that is not told (macOS)
  /// The limit that holds every process that can be listed; empty where there is none, as on a
  /// Mac, and where it holds some of them only.
  std::optional<MemoryLimit> limit = {};
};

/// The machine's memory now.
MemoryReading readMemory();

}  // namespace platform
