// The block of arguments that the kernel answers on macOS.

#include <algorithm>

#include "fuzz/fuzzing.h"
#include "platform/macos/argument_block.h"
#include "text/unicode.h"
#include "tools/joined.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  platform::ProcessFacts facts;
  platform::readArgumentBlock(fuzzing::text(data, size), facts);
  FUZZ_CHECK(facts.commandLine == joined(facts.arguments));
  FUZZ_CHECK(std::all_of(facts.arguments.begin(), facts.arguments.end(), [](auto argument) {
    return !argument.empty() && text::isUtf8(argument);
  }));
  return 0;
}
