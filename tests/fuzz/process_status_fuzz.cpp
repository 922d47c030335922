// What the kernel says of one process: /proc/PID/statm, status and stat.

#include "fuzz/fuzzing.h"
#include "platform/linux/process_status.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view bytes = fuzzing::text(data, size);
  const auto resident = platform::residentFootprint(bytes, 4096);
  FUZZ_CHECK(!resident || *resident % 4096 == 0);
  platform::footprintWithSwap(bytes);
  platform::processStat(bytes);
  // A name may hold blanks and brackets; the last bracket ends it.
  const std::string named =
      "1 (" + std::string(bytes) + ") S" + std::string(std::size_t{18} * 2, ' ');
  platform::processStat(named);
  return 0;
}
