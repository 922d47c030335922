#include "text/unicode.h"

#include <algorithm>
#include <array>

#include "text/scalar.h"

namespace text {
namespace {

bool isAscii(char c) {
  return static_cast<unsigned char>(c) < 0x80;
}

char loweredAscii(char c) {
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c + ('a' - 'A')) : c;
}

/// The length in bytes of the first `count` characters; `counted` becomes how many there were.
std::size_t lengthOfCharacters(std::string_view text, std::size_t count, std::size_t& counted) {
  counted = 0;
  std::size_t position = 0;
  utf8proc_int32_t state = 0;
  utf8proc_int32_t previous = -1;
  while (position < text.size()) {
    const Scalar scalar = firstScalar(text.substr(position));
    const bool starts = previous < 0 || scalar.value < 0 ||
                        utf8proc_grapheme_break_stateful(previous, scalar.value, &state);
    if (starts) {
      if (counted == count) break;
      ++counted;
    }
    if (scalar.value < 0) state = 0;
    previous = scalar.value;
    position += scalar.length;
  }
  return position;
}

}  // namespace

void appendLowered(std::string_view text, std::string& out) {
  while (!text.empty()) {
    const auto* end = std::find_if_not(text.begin(), text.end(), isAscii);
    const auto ascii = static_cast<std::size_t>(end - text.begin());
    const std::size_t start = out.size();
    out.resize(start + ascii);
    std::transform(text.begin(), end, out.begin() + static_cast<std::ptrdiff_t>(start),
                   loweredAscii);
    text.remove_prefix(ascii);
    if (text.empty()) break;

    const Scalar scalar = firstScalar(text);
    if (scalar.value < 0) {
      out += text.front();
    } else {
      std::array<utf8proc_uint8_t, 4> bytes{};
      const auto length = utf8proc_encode_char(utf8proc_tolower(scalar.value), bytes.data());
      out.append(reinterpret_cast<const char*>(bytes.data()), static_cast<std::size_t>(length));
    }
    text.remove_prefix(scalar.length);
  }
}

std::string lowered(std::string_view text) {
  std::string out;
  appendLowered(text, out);
  return out;
}

std::size_t characterCount(std::string_view text) {
  std::size_t counted = 0;
  lengthOfCharacters(text, std::string_view::npos, counted);
  return counted;
}

std::string_view firstCharacters(std::string_view text, std::size_t count) {
  std::size_t counted = 0;
  return text.substr(0, lengthOfCharacters(text, count, counted));
}

std::string shortened(std::string_view text, std::size_t limit, std::size_t kept) {
  // Counts no further than the limit: a name may be a hundred thousand characters long.
  const bool fits = firstCharacters(text, limit).size() == text.size();
  return fits ? std::string(text) : std::string(firstCharacters(text, kept)) + "…";
}

}  // namespace text
