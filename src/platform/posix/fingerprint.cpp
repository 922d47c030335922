#include "platform/posix/fingerprint.h"

#define XXH_INLINE_ALL  // most texts are short: the call would cost as much as the work
#include <xxhash.h>

#include "text/random_seed.h"

namespace platform {

Fingerprint fingerprintOf(std::string_view bytes, std::uint64_t number) {
  static const std::uint64_t seed = text::randomSeed();
  const XXH128_hash_t hash = XXH3_128bits_withSeed(bytes.data(), bytes.size(), seed + number);
  return {hash.low64, hash.high64};
}

}  // namespace platform
