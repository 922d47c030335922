#pragma once

#include <chrono>
#include <optional>
#include <string>

namespace platform {

using Clock = std::chrono::steady_clock;

/// All bytes up to the end of a pipe. None when that end does not come before the deadline, or
/// after 64 MiB, or reading fails.
[[nodiscard]] std::optional<std::string> readToEnd(int descriptor, Clock::time_point deadline);

}  // namespace platform
