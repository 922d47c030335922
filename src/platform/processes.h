#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace platform {

/// What the system tells of one process. The buffers keep their capacity from one
/// readProcess to the next, so that a scan allocates for its largest process only.
struct ProcessFacts {
  ProcessFacts() = default;
  ProcessFacts(const ProcessFacts&) = delete;  // `arguments` points into `commandLine`
  ProcessFacts& operator=(const ProcessFacts&) = delete;

  std::string name;                           ///< last path component of the first argument,
                                              ///< else of the executable's path; never empty
  std::string commandLine;                    ///< the arguments joined by single spaces
  std::vector<std::string_view> arguments;    ///< each valid UTF-8 and not empty
  std::optional<std::uint32_t> effectiveUid;  ///< whose rights it has; none when unknown
};

/// Every process id, each > 0, in the system's order; empty when they can't be listed.
/// What holds for the whole machine during the scan that follows is looked at here too
/// (Linux: whether any swap is in use).
std::vector<std::int32_t> allPids();

/// Reads one process into `facts`. False when there is nothing to show: it is gone, or
/// has neither arguments nor an executable. Arguments that are empty or not UTF-8 are
/// left out; an argument list is read whole (Linux: its first 16 MiB).
bool readProcess(std::int32_t pid, ProcessFacts& facts);

/// The memory that the process itself keeps busy, in bytes; none when unreadable.
std::optional<std::uint64_t> physicalFootprint(std::int32_t pid);

/// A number that no other process on this machine has or will have together with this
/// pid while the machine is up: when it started (Linux: clock ticks since the machine did;
/// macOS: microseconds since 1970); none when gone.
std::optional<std::uint64_t> startIdentity(std::int32_t pid);

/// The program's own process id.
std::int32_t ownPid();

}  // namespace platform
