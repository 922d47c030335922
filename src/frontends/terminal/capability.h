#pragma once

#include <cstdint>

namespace terminal {

/// Whether the terminal has a text capability: terminfo answers null where it lacks one, and -1
/// as an address where there can be no text of that name.
inline bool isPresent(const char* capability) {
  return capability != nullptr && reinterpret_cast<std::intptr_t>(capability) != -1;
}

}  // namespace terminal
