#include "platform/posix/utf8.h"

#include <utf8proc.h>

#include <algorithm>

#include "text/ascii_prefix.h"

namespace platform {
namespace {

/// How many bytes the character at the start takes; 0 when there is no well-formed one.
std::size_t characterLength(std::string_view bytes) {
  constexpr std::size_t kLongest = 4;
  utf8proc_int32_t scalar = 0;
  const auto length =
      utf8proc_iterate(reinterpret_cast<const utf8proc_uint8_t*>(bytes.data()),
                       static_cast<utf8proc_ssize_t>(std::min(bytes.size(), kLongest)), &scalar);
  return length > 0 ? static_cast<std::size_t>(length) : 0;
}

}  // namespace

bool isUtf8(std::string_view bytes) {
  bytes.remove_prefix(text::asciiPrefixLength(bytes));  // nearly always all of it
  while (!bytes.empty()) {
    const std::size_t length = characterLength(bytes);
    if (length == 0) return false;
    bytes.remove_prefix(length);
  }
  return true;
}

std::string repairedUtf8(std::string_view bytes) {
  std::string repaired;
  while (!bytes.empty()) {
    const std::size_t length = characterLength(bytes);
    repaired += length == 0 ? "\uFFFD" : bytes.substr(0, length);
    bytes.remove_prefix(std::max<std::size_t>(length, 1));
  }
  return repaired;
}

}  // namespace platform
