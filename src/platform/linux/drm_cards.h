#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "platform/gpus.h"
#include "platform/linux/file_tree.h"

namespace platform {

/// A graphics card or accelerator that the kernel has a driver for.
struct DrmCard {
  std::string id;      ///< GpuDevice::id
  std::string driver;  ///< "amdgpu"
  std::string name;    ///< GpuDevice::name
  bool sleeps = false;
  bool computes = false;                ///< programs can use it for more than to show a picture
  std::optional<GpuCapacity> capacity;  ///< none while it sleeps
  /// Its device files, by major and minor number.
  struct Node {
    std::uint32_t majorNumber = 0;
    std::uint32_t minorNumber = 0;
  };
  std::vector<Node> nodes;
};

/// Major numbers of the device files of cards and of accelerators.
///@{
inline constexpr std::uint32_t kDrmMajor = 226;
inline constexpr std::uint32_t kAccelMajor = 261;
///@}

/// All that `sys`, which is /sys, lists, by id. Wakes none.
std::vector<DrmCard> drmCards(const FileTree& sys);

/// Bytes, by pid and the card's place in a list of cards.
using CardUses = std::map<std::pair<std::int32_t, std::size_t>, std::uint64_t>;

/// What the compute driver of AMD's cards (kfd) tells of every process, of whichever user. Cards
/// that sleep are not asked.
CardUses kfdUses(const FileTree& sys, const std::vector<DrmCard>& cards);

/// Whether the power management has put a device to sleep, or is about to; `device` is its
/// folder below `sys`.
bool isAsleep(const FileTree& sys, const std::string& device);

}  // namespace platform
