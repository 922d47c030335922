// /proc/meminfo and /proc/pressure/memory.

#include "fuzz/fuzzing.h"
#include "platform/linux/memory.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view bytes = fuzzing::text(data, size);
  const platform::MemoryReading reading = platform::memoryIn(bytes);
  FUZZ_CHECK(reading.totalBytes >= 0);
  platform::isSwapInUse(bytes);
  FUZZ_CHECK(reading.swappedBytes.value_or(0) >= 0);
  if (const auto stalls = platform::stallsIn(bytes)) {
    FUZZ_CHECK(stalls->some >= 0 && stalls->some <= 100);
    FUZZ_CHECK(stalls->full >= 0 && stalls->full <= 100);
  }
  return 0;
}
