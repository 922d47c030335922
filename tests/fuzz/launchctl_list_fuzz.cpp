// What `launchctl list` prints.

#include "fuzz/fuzzing.h"
#include "platform/macos/launchctl_list.h"
#include "text/unicode.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  for (const auto& [label, pid] : platform::parseLaunchctlList(fuzzing::text(data, size))) {
    FUZZ_CHECK(text::isUtf8(label));
    FUZZ_CHECK(label.find('\n') == std::string::npos && label.find('\t') == std::string::npos);
  }
  return 0;
}
