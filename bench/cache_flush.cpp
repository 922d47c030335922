#include "cache_flush.h"

#include <unistd.h>

#include <algorithm>
#include <cstddef>
#include <vector>

namespace bench {
namespace {

/// Twice what the last of the caches holds. Shared machines say a lot: then a part has to do.
std::size_t enoughBytes() {
  constexpr long kLeast = 16 << 20;
  constexpr long kMost = 128 << 20;
  return static_cast<std::size_t>(std::clamp(2 * sysconf(_SC_LEVEL3_CACHE_SIZE), kLeast, kMost));
}

}  // namespace

void flushCaches() {
  constexpr std::size_t kLine = 64;
  static std::vector<unsigned char> bytes(enoughBytes());
  for (std::size_t i = 0; i < bytes.size(); i += kLine) ++bytes[i];
}

}  // namespace bench
