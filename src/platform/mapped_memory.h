#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace platform {

/// Memory that a process uses and that is not in its footprint, because others may use the same.
struct SharedMemory {
  std::uint64_t fileBytes = 0;    ///< pages of mapped files that are in memory
  std::uint64_t sharedBytes = 0;  ///< shared memory that it has touched
};

/// Less than this is not worth a look.
inline constexpr std::uint64_t kLeastSharedBytes = 256 << 20;

/// Of the process whose physicalFootprint was asked last; none when each is less than
/// kLeastSharedBytes, or that can't be told. Costs a read only where there is so much.
std::optional<SharedMemory> sharedMemory(std::int32_t pid);

/// A file that a process has mapped.
struct MappedFile {
  std::string path;
  std::uint64_t bytes = 0;  ///< as much as is mapped, in memory or not

  bool operator==(const MappedFile&) const = default;
};

/// The largest files that a process of the user's own has mapped, largest first, at most `most`;
/// empty when that can't be read.
std::vector<MappedFile> mappedFiles(std::int32_t pid, std::size_t most);

/// Of each of these processes of the user's own its fair share of all memory: what it shares with
/// others counts in parts. In bytes; none for one with more than kMostSharedOut resident, for one
/// that can't be read, and for those that were not read within `budget`. They are read on another
/// thread: the kernel takes 10 ms for a GiB. While that still reads for an earlier question, there
/// are none.
std::vector<std::optional<std::uint64_t>> fairShares(std::span<const std::int32_t> pids,
                                                     std::chrono::milliseconds budget);
inline constexpr std::uint64_t kMostSharedOut = 16ULL << 30;

}  // namespace platform
