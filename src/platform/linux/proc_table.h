#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace platform {

/// The amount in a line "key:   123 kB" of /proc/meminfo or /proc/PID/status, in bytes; none when
/// there is no such line, or it holds no number of kB.
std::optional<std::uint64_t> bytesInTable(std::string_view table, std::string_view key);

}  // namespace platform
