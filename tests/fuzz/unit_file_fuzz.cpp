// A service's unit file.

#include <algorithm>

#include "fuzz/fuzzing.h"
#include "platform/linux/unit_command.h"
#include "platform/linux/unit_file.h"
#include "platform/posix/utf8.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view bytes = fuzzing::text(data, size);
  const platform::ServiceUnit unit = platform::serviceUnit(bytes);
  FUZZ_CHECK(std::all_of(unit.command.begin(), unit.command.end(), platform::isUtf8));
  if (const auto words = platform::commandWords(bytes)) {
    FUZZ_CHECK(std::all_of(words->begin(), words->end(), platform::isUtf8));
  }
  return 0;
}
