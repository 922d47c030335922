#include "text/base64.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>

namespace text {

std::string inBase64(std::string_view bytes) {
  constexpr std::string_view kDigits =
      "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
  constexpr std::size_t kGroup = 3;
  std::string encoded;
  encoded.reserve((bytes.size() + kGroup - 1) / kGroup * 4);
  for (; !bytes.empty(); bytes.remove_prefix(std::min(bytes.size(), kGroup))) {
    std::uint32_t bits = 0;
    for (std::size_t i = 0; i < kGroup; ++i) {
      bits = bits << 8 | (i < bytes.size() ? static_cast<unsigned char>(bytes[i]) : 0U);
    }
    for (std::size_t i = 0; i <= kGroup; ++i) {
      encoded += i <= bytes.size() ? kDigits[bits >> (18 - 6 * i) & 0x3F] : '=';
    }
  }
  return encoded;
}

}  // namespace text
