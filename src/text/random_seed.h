#pragma once

#include <cstdint>
#include <random>

namespace text {

/// For a hash of what others choose: a number that nobody can foretell.
inline std::uint64_t randomSeed() {
  std::random_device random;
  return std::uint64_t{random()} << 32 | random();
}

}  // namespace text
