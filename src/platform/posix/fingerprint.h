#pragma once

#include <string_view>

#include "platform/processes.h"

namespace platform {

/// Of these bytes and of the number, for as long as the program runs.
Fingerprint fingerprintOf(std::string_view bytes, std::uint64_t number = 0);

}  // namespace platform
