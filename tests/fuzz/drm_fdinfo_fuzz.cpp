// What the kernel says of an open file of a graphics card: /proc/PID/fdinfo/FD.

#include "fuzz/fuzzing.h"
#include "platform/linux/drm_fdinfo.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view bytes = fuzzing::text(data, size);
  const auto client = platform::drmClient(bytes);
  if (!client) return 0;
  FUZZ_CHECK(!client->driver.empty());
  // Lines that it doesn't know change nothing.
  const std::string more = "pos:\t0\n" + std::string(bytes) + "\ndrm-engine-gfx:\t17 ns\n";
  const auto again = platform::drmClient(more);
  FUZZ_CHECK(again && again->cardBytes == client->cardBytes && again->id == client->id);
  return 0;
}
