// /proc/PID/maps.

#include "fuzz/fuzzing.h"
#include "platform/linux/memory_maps.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const auto files = platform::filesInMaps(fuzzing::text(data, size), 3);
  FUZZ_CHECK(files.size() <= 3);
  for (const auto& file : files) FUZZ_CHECK(file.path.starts_with('/'));
  for (std::size_t i = 1; i < files.size(); ++i) {
    FUZZ_CHECK(files[i - 1].bytes >= files[i].bytes);
  }
  return 0;
}
