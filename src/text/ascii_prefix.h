#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

namespace text {

/// Eight bytes of text as one number: nearly all text is ASCII, and goes eight bytes at a time.
using EightBytes = std::uint64_t;

/// The same byte in all eight places.
constexpr EightBytes eightTimes(unsigned char byte) {
  return EightBytes{0x0101010101010101} * byte;
}

/// The eight bytes from here on, in the machine's order; all eight are there.
inline EightBytes eightBytesAt(const char* position) {
  EightBytes bytes = 0;
  std::memcpy(&bytes, position, sizeof bytes);
  return bytes;
}

/// How many bytes at the start of a text are ASCII.
inline std::size_t asciiPrefixLength(std::string_view text) {
  std::size_t length = 0;
  while (length + sizeof(EightBytes) <= text.size() &&
         (eightBytesAt(text.data() + length) & eightTimes(0x80)) == 0) {
    length += sizeof(EightBytes);
  }
  while (length < text.size() && static_cast<unsigned char>(text[length]) < 0x80) ++length;
  return length;
}

}  // namespace text
