#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "scanner/vorda_process.h"

/// One graphics card.
struct GpuCard {
  std::string name;   ///< as its driver calls it; with its place on the bus where there are several
  double usedGB = 0;  ///< in GiB, by whomever
  double totalGB = 0;  ///< in GiB

  bool operator==(const GpuCard&) const = default;
};

/// What the graphics cards hold, and for whom.
struct GpuSample {
  std::vector<GpuCard> cards;  ///< those of which it is known how much memory they have
  /// The largest holders first: AI workloads, and the user's own processes from
  /// GpuSampling::kMinMemMB on; at most GpuSampling::kMost. Copies: some are in no other list.
  std::vector<VordaProcess> processes;
  /// Ordinary processes that were scanned for their cards' memory alone; the largest first.
  std::vector<VordaProcess> unlisted;
};

/// Finds out what graphics cards hold. Does not wait for their drivers.
namespace GpuSampling {

/// An ordinary process is of interest if it holds at least this much of the cards' memory, in MiB.
inline constexpr double kMinMemMB = 50;
inline constexpr std::size_t kMost = 8;

/// The pids of those that hold so much, ascending, as far as that is known before processes are
/// scanned.
/// `isWatched`: platform::GpuQuestion.
std::vector<std::int32_t> holders(bool isWatched);

/// Sets VordaProcess::gpuMemory of all `scanned`, of which those with the pids `shown` are asked
/// one by one where that is the only way. Ordinary processes that were scanned for their cards'
/// memory alone, and have less than `minMemMB` MiB, are moved to GpuSample::unlisted.
GpuSample take(std::vector<VordaProcess>& scanned, double minMemMB, bool isWatched,
               std::span<const std::int32_t> shown);

/// Whether what this process holds of cards' memory is enough for a row: something for an AI
/// workload, kMinMemMB for the user's own others.
bool isOfInterest(const VordaProcess& process);

}  // namespace GpuSampling
