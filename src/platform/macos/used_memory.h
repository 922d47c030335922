#pragma once

#include <algorithm>
#include <cstdint>

#include "platform/memory.h"

namespace platform {

/// The page counts of a Mach kernel's memory statistics that the used figure is made of.
struct PageCounts {
  std::uint32_t free = 0;         ///< holding nothing
  std::uint32_t speculative = 0;  ///< read ahead from files, and not asked for yet
  std::uint32_t wired = 0;        ///< never paged out
  std::uint32_t purgeable = 0;    ///< given back without asking when memory is short
  std::uint32_t internal = 0;     ///< of processes, and backed by no file
  std::uint32_t compressor = 0;   ///< that the compressed ones take
};

/// Used = wired + max(internal - purgeable, 0) + compressed; free = free + speculative: the
/// figures that Activity Monitor shows. `pageSize` is in bytes.
constexpr MemoryInUse memoryInUse(const PageCounts& pages, double pageSize) {
  const double app = std::max(pageSize * pages.internal - pageSize * pages.purgeable, 0.0);
  return {pageSize * pages.wired + app + pageSize * pages.compressor,
          pageSize * pages.free + pageSize * pages.speculative};
}

}  // namespace platform
