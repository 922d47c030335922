#pragma once

#include <string>
#include <string_view>

namespace platform {

/// Whether the bytes are well-formed UTF-8.
bool isUtf8(std::string_view bytes);

/// The bytes with U+FFFD for each that is not part of well-formed UTF-8.
std::string repairedUtf8(std::string_view bytes);

}  // namespace platform
