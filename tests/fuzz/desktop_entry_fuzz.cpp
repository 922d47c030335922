// An application's .desktop file, and the command in it.

#include "fuzz/fuzzing.h"
#include "platform/linux/desktop_entry.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view bytes = fuzzing::text(data, size);
  if (const auto entry = platform::desktopEntry(bytes)) platform::commandOf(*entry, "/a/b.desktop");

  platform::DesktopEntry entry;
  entry.exec = bytes;
  const auto words = platform::commandOf(entry, "/a/b.desktop");
  FUZZ_CHECK(!words || !words->empty());
  return 0;
}
