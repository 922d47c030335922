// Text that somebody else chose, on its way to a screen.

#include <algorithm>

#include "fuzz/fuzzing.h"
#include "text/display_line.h"
#include "text/unicode.h"

namespace {

bool isControl(char c) {
  return static_cast<unsigned char>(c) < 0x20 || c == 0x7F;
}

/// How many bytes the longest character has.
std::size_t longestCharacter(std::string_view text) {
  std::size_t longest = 0;
  while (!text.empty()) {
    const std::size_t length = text::firstCharacters(text, 1).size();
    longest = std::max(longest, length);
    text.remove_prefix(length);
  }
  return longest;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view bytes = fuzzing::text(data, size);

  const std::string line = text::displayLine(bytes);
  FUZZ_CHECK(text::isUtf8(line));
  FUZZ_CHECK(std::none_of(line.begin(), line.end(), isControl));
  for (const char* hidden :
       {"\u0085", "\u2028", "\u2029", "\u202E", "\u2066", "\u200B", "\uFEFF"}) {
    FUZZ_CHECK(line.find(hidden) == std::string::npos);
  }
  FUZZ_CHECK(text::displayLine(line) == line);
  FUZZ_CHECK(line.size() <= text::kMostTextBytes);
  FUZZ_CHECK(longestCharacter(line) <= text::kMostCharacterBytes);
  const std::string name = text::displayName(bytes);
  FUZZ_CHECK(name.size() <= text::kMostNameBytes);
  FUZZ_CHECK(longestCharacter(name) <= text::kMostCharacterBytes);
  FUZZ_CHECK(text::displayLine(name) == name);
  FUZZ_CHECK(text::displayName(name) == name);
  const std::string lines = text::displayLines(bytes);
  FUZZ_CHECK(longestCharacter(lines) <= text::kMostCharacterBytes);
  FUZZ_CHECK(lines.size() <= text::kMostTextBytes);
  const auto kept = std::count(lines.begin(), lines.end(), '\n');
  const auto given = std::count(bytes.begin(), bytes.end(), '\n');
  FUZZ_CHECK(kept == given || (lines.ends_with("…") && kept < given));

  const std::size_t count = text::characterCount(bytes);
  FUZZ_CHECK(text::firstCharacters(bytes, count) == bytes);
  const std::string_view beginning = text::firstCharacters(bytes, count / 2);
  FUZZ_CHECK(bytes.substr(0, beginning.size()) == beginning);
  FUZZ_CHECK(text::characterCount(beginning) == count / 2);
  FUZZ_CHECK(text::characterCount(text::shortened(line, 48, 45)) <= 48);
  FUZZ_CHECK(text::withBytesOutsideUtf8Replaced(bytes, '?').size() == bytes.size());
  FUZZ_CHECK(text::isUtf8(text::repairedUtf8(bytes)));
  text::lowered(bytes);
  return 0;
}
