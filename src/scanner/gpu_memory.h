#pragma once

#include <string>
#include <vector>

/// What one process holds of graphics cards' memory. Never part of its footprint.
struct GpuMemory {
  /// Of one card.
  struct Share {
    std::string card;  ///< what the card is called, as in GpuCard
    double memMB = 0;  ///< in MiB

    /// Field by field.
    bool operator==(const Share&) const = default;
  };

  double memMB = 0;           ///< of all cards together, in MiB
  std::vector<Share> shares;  ///< by card; not empty

  /// Field by field.
  bool operator==(const GpuMemory&) const = default;
};

/// One graphics card.
struct GpuCard {
  std::string name;   ///< as its driver calls it; with its place on the bus where there are several
  double usedGB = 0;  ///< in GiB, by whomever
  double totalGB = 0;  ///< in GiB

  /// Field by field.
  bool operator==(const GpuCard&) const = default;
};
