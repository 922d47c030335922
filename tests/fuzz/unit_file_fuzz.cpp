// A service's unit file.

#include <algorithm>

#include "fuzz/fuzzing.h"
#include "platform/linux/unit_command.h"
#include "platform/linux/unit_file.h"
#include "text/unicode.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view bytes = fuzzing::text(data, size);
  const platform::ServiceUnit unit = platform::serviceUnit(bytes);
  FUZZ_CHECK(std::all_of(unit.command.begin(), unit.command.end(), text::isUtf8));
  if (const auto words = platform::commandWords(bytes)) {
    FUZZ_CHECK(std::all_of(words->begin(), words->end(), text::isUtf8));
  }
  return 0;
}
