// What vorda-gpu answers: what the driver's library says of names and figures is in it.

#include "fuzz/fuzzing.h"
#include "platform/linux/gpu_answer.h"
#include "text/unicode.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const auto answer = platform::parseGpuAnswer(fuzzing::text(data, size));
  if (!answer) return 0;
  std::string written;
  FUZZ_CHECK(answer->devices.size() <= platform::kMostGpuCards);
  for (const auto& card : answer->devices) {
    FUZZ_CHECK(text::isUtf8(card.id) && text::isUtf8(card.name));
    FUZZ_CHECK(!card.capacity || card.capacity->usedBytes <= card.capacity->totalBytes);
    written += platform::cardLine(card);
  }
  for (const auto& use : answer->uses) {
    FUZZ_CHECK(use.pid > 0 && use.bytes > 0 && use.device < answer->devices.size());
    written += platform::useLine(use);
  }
  // Said again it is the same.
  const auto again = platform::parseGpuAnswer(written.append(platform::kLastLine));
  if (written.size() <= platform::kLongestGpuAnswer) {
    FUZZ_CHECK(again && again->uses == answer->uses);
    FUZZ_CHECK(again->devices.size() == answer->devices.size());
  }
  return 0;
}
