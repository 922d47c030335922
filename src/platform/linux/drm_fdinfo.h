#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace platform {

/// What the kernel tells of an open file of a graphics card. The texts point into what was parsed.
struct DrmClient {
  std::string_view driver;          ///< "amdgpu"
  std::string_view device;          ///< its address on the PCI bus; empty where it is on none
  std::optional<std::uint64_t> id;  ///< one for all descriptors of the same open file
  /// What it holds of the card's own memory; none when the card has no memory of its own, or
  /// its driver doesn't tell.
  std::optional<std::uint64_t> cardBytes;
};

/// Of the text of /proc/PID/fdinfo/FD; none when that is no graphics card's.
std::optional<DrmClient> drmClient(std::string_view fdinfo);

}  // namespace platform
