#pragma once

#include <utf8proc.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace text {

/// One Unicode scalar as it stands in UTF-8.
struct Scalar {
  utf8proc_int32_t value;  ///< -1: a byte that is not UTF-8
  std::size_t length;      ///< in bytes, at least 1
};

/// The first scalar of `text`, which must not be empty.
inline Scalar firstScalar(std::string_view text) {
  utf8proc_int32_t value = -1;
  const auto length = utf8proc_iterate(reinterpret_cast<const utf8proc_uint8_t*>(text.data()),
                                       static_cast<utf8proc_ssize_t>(text.size()), &value);
  return length > 0 ? Scalar{value, static_cast<std::size_t>(length)} : Scalar{-1, 1};
}

/// Appends the scalar in UTF-8; nothing if `value` is no Unicode scalar.
inline void appendScalar(std::uint32_t value, std::string& text) {
  utf8proc_uint8_t bytes[4];
  if (utf8proc_codepoint_valid(static_cast<utf8proc_int32_t>(value)) == 0) return;
  const auto length = utf8proc_encode_char(static_cast<utf8proc_int32_t>(value), bytes);
  text.append(reinterpret_cast<const char*>(bytes), static_cast<std::size_t>(length));
}

/// The last scalar of `text`, which is UTF-8; "" of "".
inline std::string_view lastScalar(std::string_view text) {
  std::size_t begin = text.size();
  while (begin > 0 && (static_cast<unsigned char>(text[--begin]) & 0xC0) == 0x80) {
  }
  return text.substr(begin);
}

}  // namespace text
