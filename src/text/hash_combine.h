#pragma once

#include <cstddef>
#include <functional>

namespace text {

/// Adds one more value to a hash.
template <typename Value>
void hashCombine(std::size_t& seed, const Value& value) {
  seed ^= std::hash<Value>{}(value) + static_cast<std::size_t>(0x9e3779b97f4a7c15ULL) +
          (seed << 6) + (seed >> 2);
}

}  // namespace text
