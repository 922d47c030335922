#pragma once

#include <chrono>
#include <optional>
#include <string>

namespace platform {

using Clock = std::chrono::steady_clock;

/// All bytes up to the end of a pipe. None when the end does not come before the deadline or
/// within 64 MiB, or when reading fails.
[[nodiscard]] std::optional<std::string> readToEnd(int descriptor, Clock::time_point deadline);

}  // namespace platform
