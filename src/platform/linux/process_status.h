#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace platform {

/// The memory that a process keeps busy, from /proc/PID/statm: resident - shared pages, in
/// bytes. What is swapped out is not in it.
std::optional<std::uint64_t> residentFootprint(std::string_view statm, std::uint64_t pageSize);

/// The same from /proc/PID/status, in RAM or swapped out: RssAnon + VmSwap; VmRSS when the
/// kernel gives no split. None for a process without memory of its own.
std::optional<std::uint64_t> footprintWithSwap(std::string_view status);

/// When a process was started, in clock ticks since boot: field 22 of /proc/PID/stat.
std::optional<std::uint64_t> startTime(std::string_view stat);

}  // namespace platform
