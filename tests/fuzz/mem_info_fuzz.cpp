// /proc/meminfo.

#include "fuzz/fuzzing.h"
#include "platform/linux/memory.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view bytes = fuzzing::text(data, size);
  const platform::MemoryReading reading = platform::memoryIn(bytes);
  FUZZ_CHECK(reading.totalBytes >= 0);
  platform::isSwapInUse(bytes);
  return 0;
}
