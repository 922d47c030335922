// Text that somebody else chose, on its way to a screen.

#include <algorithm>

#include "fuzz/fuzzing.h"
#include "platform/posix/utf8.h"
#include "text/display_line.h"
#include "text/unicode.h"

namespace {

bool isControl(char c) {
  return static_cast<unsigned char>(c) < 0x20 || c == 0x7F;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view bytes = fuzzing::text(data, size);

  const std::string line = text::displayLine(bytes);
  FUZZ_CHECK(platform::isUtf8(line));
  FUZZ_CHECK(std::none_of(line.begin(), line.end(), isControl));
  for (const char* hidden :
       {"\u0085", "\u2028", "\u2029", "\u202E", "\u2066", "\u200B", "\uFEFF"}) {
    FUZZ_CHECK(line.find(hidden) == std::string::npos);
  }
  FUZZ_CHECK(text::displayLine(line) == line);
  const std::string lines = text::displayLines(bytes);
  FUZZ_CHECK(std::count(lines.begin(), lines.end(), '\n') ==
             std::count(bytes.begin(), bytes.end(), '\n'));

  const std::size_t count = text::characterCount(bytes);
  FUZZ_CHECK(text::firstCharacters(bytes, count) == bytes);
  const std::string_view beginning = text::firstCharacters(bytes, count / 2);
  FUZZ_CHECK(bytes.substr(0, beginning.size()) == beginning);
  FUZZ_CHECK(text::characterCount(beginning) == count / 2);
  FUZZ_CHECK(text::characterCount(text::shortened(line, 48, 45)) <= 48);
  FUZZ_CHECK(text::withBytesOutsideUtf8Replaced(bytes, '?').size() == bytes.size());
  FUZZ_CHECK(platform::isUtf8(platform::repairedUtf8(bytes)));
  text::lowered(bytes);
  return 0;
}
