// /proc/PID/cmdline, with the executable's path and the kernel's name for the process.
// The bytes: the path, a line feed, the name, a line feed, the block.

#include <algorithm>

#include "fuzz/fuzzing.h"
#include "platform/linux/process_arguments.h"
#include "text/unicode.h"
#include "tools/joined.h"

namespace {

std::string_view takeLine(std::string_view& bytes) {
  const auto end = std::min(bytes.find('\n'), bytes.size());
  const std::string_view line = bytes.substr(0, end);
  bytes.remove_prefix(std::min(end + 1, bytes.size()));
  return line;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  std::string_view block = fuzzing::text(data, size);
  const std::string_view executable = takeLine(block);
  const std::string_view comm = takeLine(block);

  platform::ProcessFacts facts;
  platform::readArguments(block, {executable, comm}, facts);
  FUZZ_CHECK(facts.commandLine == joined(facts.arguments));
  FUZZ_CHECK(std::all_of(facts.arguments.begin(), facts.arguments.end(), [](auto argument) {
    return !argument.empty() && text::isUtf8(argument);
  }));
  FUZZ_CHECK(!facts.name.empty() || (facts.arguments.empty() && executable.empty()));

  // What did not need its origin reads the same without one.
  platform::ProcessFacts alone;
  platform::readArguments(block, {}, alone);
  if (!platform::needsOrigin(block, alone)) {
    FUZZ_CHECK(alone.name == facts.name);
    FUZZ_CHECK(alone.commandLine == facts.commandLine);
    FUZZ_CHECK(std::equal(alone.arguments.begin(), alone.arguments.end(), facts.arguments.begin(),
                          facts.arguments.end()));
  }
  return 0;
}
