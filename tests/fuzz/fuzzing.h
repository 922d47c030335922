#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

/// A fuzz target is one file that defines this: it gives the bytes to the code under test
/// and checks what must hold whatever they are. libFuzzer calls it with bytes of its own
/// making (`make fuzz`), replay.cpp with those in corpus/ (`make test`).
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace fuzzing {

inline std::string_view text(const std::uint8_t* data, std::size_t size) {
  return {reinterpret_cast<const char*>(data), size};
}

/// The bytes cut at each `separator`; never empty.
inline std::vector<std::string> split(std::string_view bytes, char separator) {
  std::vector<std::string> parts;
  while (true) {
    const auto end = bytes.find(separator);
    parts.emplace_back(bytes.substr(0, end));
    if (end == std::string_view::npos) return parts;
    bytes.remove_prefix(end + 1);
  }
}

[[noreturn]] inline void fail(const char* file, int line, const char* claim) {
  std::fprintf(stderr, "%s:%d: does not hold: %s\n", file, line, claim);
  std::abort();
}

}  // namespace fuzzing

#define FUZZ_CHECK(claim)                                    \
  do {                                                       \
    if (!(claim)) fuzzing::fail(__FILE__, __LINE__, #claim); \
  } while (false)
