#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace platform {

/// A card's memory, or that of the machine where the card has none of its own.
struct GpuCapacity {
  std::uint64_t totalBytes = 0;  ///< above 0
  std::uint64_t usedBytes = 0;   ///< by whomever; never more than the total

  bool operator==(const GpuCapacity&) const = default;
};

/// One graphics card or accelerator.
struct GpuDevice {
  std::string id;    ///< tells it from the others: "0000:65:00.0" where it is on a PCI bus
  std::string name;  ///< as its driver calls it; valid UTF-8, may be empty
  std::optional<GpuCapacity> capacity;  ///< none where the driver doesn't tell

  bool operator==(const GpuDevice&) const = default;
};

/// What one process holds of one card's memory.
struct GpuUse {
  std::int32_t pid = 0;     ///< above 0
  std::size_t device = 0;   ///< place in GpuReading::devices
  std::uint64_t bytes = 0;  ///< above 0
  /// When it was asked, on processClock(). A process with this pid that started later is another
  /// one than this was said of.
  std::uint64_t askedAt = 0;

  bool operator==(const GpuUse&) const = default;
};

/// What was found of cards, perhaps a while ago.
struct GpuReading {
  std::vector<GpuDevice> devices;  ///< by id; empty where there is none
  std::vector<GpuUse> uses;        ///< by pid, then device; one of each process and device
};

/// What the caller wants of the cards.
struct GpuQuestion {
  /// Somebody looks at the answer now: it may be 5 seconds old, else 10.
  bool isWatched = false;
  /// The processes that matter most. Where processes have to be asked one after the other, only
  /// these are; without any, none is. While somebody looks, one that never was asked is asked at
  /// once.
  std::span<const std::int32_t> pids = {};
};

/// Cards whose memory is their own, and who holds it. Linux: of NVIDIA's as the driver says
/// (through a helper process, which is asked here and heard at a later call), of others as the
/// kernel says; a card that sleeps is not asked, and what was known of it stands. macOS, where
/// a card's memory is the machine's: nothing. Never waits for a driver.
GpuReading readGpus(const GpuQuestion& question);

/// For a program that shows its figures once: asks, and waits for the answer, 2 seconds at most.
/// Returns at once where nobody has to be waited for.
void awaitGpus();

}  // namespace platform
