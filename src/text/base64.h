#pragma once

#include <string>
#include <string_view>

namespace text {

/// The bytes in base64 (RFC 4648), padded and without line breaks.
[[nodiscard]] std::string inBase64(std::string_view bytes);

}  // namespace text
