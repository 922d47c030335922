#pragma once

#include <utf8proc.h>

#include <cstddef>
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

}  // namespace text
