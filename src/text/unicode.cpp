#include "text/unicode.h"

#include <array>
#include <cstdint>
#include <cstring>

#include "text/ascii.h"
#include "text/scalar.h"

namespace text {
namespace {

/// Eight bytes of text as one number. Nearly all text is ASCII, which is handled eight bytes at a
/// time.
using EightBytes = std::uint64_t;

/// The same byte in all eight places.
constexpr EightBytes eightTimes(unsigned char byte) {
  return EightBytes{0x0101010101010101} * byte;
}

/// The eight bytes from `position` on, which must exist, in the machine's byte order.
EightBytes eightBytesAt(const char* position) {
  EightBytes bytes = 0;
  std::memcpy(&bytes, position, sizeof bytes);
  return bytes;
}

/// How many bytes at the start of a text are ASCII.
std::size_t asciiPrefixLength(std::string_view text) {
  std::size_t length = 0;
  while (length + sizeof(EightBytes) <= text.size() &&
         (eightBytesAt(text.data() + length) & eightTimes(0x80)) == 0) {
    length += sizeof(EightBytes);
  }
  while (length < text.size() && static_cast<unsigned char>(text[length]) < 0x80) ++length;
  return length;
}

void lowerAscii(char* text, std::size_t length) {
  std::size_t i = 0;
  for (; i + sizeof(EightBytes) <= length; i += sizeof(EightBytes)) {
    const EightBytes bytes = eightBytesAt(text + i);
    // In each byte, the first sum sets the top bit from 'A' on, the second from the one after 'Z'
    // on.
    const EightBytes fromA = bytes + eightTimes(0x80 - 'A');
    const EightBytes behindZ = bytes + eightTimes(0x80 - 'Z' - 1);
    static_assert('a' - 'A' == 0x80 >> 2);
    const EightBytes lowered = bytes | ((fromA & ~behindZ & eightTimes(0x80)) >> 2);
    std::memcpy(text + i, &lowered, sizeof lowered);
  }
  for (; i < length; ++i) {
    text[i] = asciiLower(text[i]);
  }
}

bool isAscii(char byte) {
  return static_cast<unsigned char>(byte) < 0x80;
}

/// How many bytes at the start of a text are not ASCII and do not change in lower case.
std::size_t lengthThatStaysWhenLowered(std::string_view text) {
  std::size_t length = 0;
  while (length < text.size() && !isAscii(text[length])) {
    const Scalar scalar = firstScalar(text.substr(length));
    if (scalar.value >= 0 && utf8proc_tolower(scalar.value) != scalar.value) break;
    length += scalar.length;
  }
  return length;
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

bool isUtf8(std::string_view bytes) {
  bytes.remove_prefix(asciiPrefixLength(bytes));  // nearly always the whole text
  while (!bytes.empty()) {
    const Scalar scalar = firstScalar(bytes);
    if (scalar.value < 0) return false;
    bytes.remove_prefix(scalar.length);
  }
  return true;
}

std::string repairedUtf8(std::string_view bytes) {
  std::string repaired;
  while (!bytes.empty()) {
    const Scalar scalar = firstScalar(bytes);
    repaired += scalar.value < 0 ? "\uFFFD" : bytes.substr(0, scalar.length);
    bytes.remove_prefix(scalar.length);
  }
  return repaired;
}

void appendLowered(std::string_view text, std::string& out) {
  while (!text.empty()) {
    const std::size_t ascii = asciiPrefixLength(text);
    out.append(text, 0, ascii);
    lowerAscii(out.data() + out.size() - ascii, ascii);
    text.remove_prefix(ascii);

    const std::size_t kept = lengthThatStaysWhenLowered(text);
    out.append(text, 0, kept);
    text.remove_prefix(kept);
    if (text.empty() || isAscii(text.front())) continue;

    const Scalar scalar = firstScalar(text);
    std::array<utf8proc_uint8_t, 4> bytes{};
    const auto length = utf8proc_encode_char(utf8proc_tolower(scalar.value), bytes.data());
    out.append(reinterpret_cast<const char*>(bytes.data()), static_cast<std::size_t>(length));
    text.remove_prefix(scalar.length);
  }
}

std::string lowered(std::string_view text) {
  std::string out;
  appendLowered(text, out);
  return out;
}

std::string withBytesOutsideUtf8Replaced(std::string_view text, char substitute) {
  std::string out(text);
  for (std::size_t position = 0;;) {
    position += asciiPrefixLength(text.substr(position));
    if (position == text.size()) break;
    const Scalar scalar = firstScalar(text.substr(position));
    if (scalar.value < 0) out[position] = substitute;
    position += scalar.length;
  }
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

std::string_view withinBytes(std::string_view text, std::size_t limit) {
  if (text.size() <= limit) return text;
  const auto isInsideScalar = [](char byte) { return (byte & 0xC0) == 0x80; };
  while (limit > 0 && isInsideScalar(text[limit])) --limit;
  return text.substr(0, limit);
}

std::string shortened(std::string_view text, std::size_t limit, std::size_t kept) {
  // Does not count beyond the limit: a name may be a hundred thousand characters long.
  const bool fits = firstCharacters(text, limit).size() == text.size();
  return fits ? std::string(text) : std::string(firstCharacters(text, kept)) + "…";
}

}  // namespace text
