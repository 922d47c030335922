#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
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

/// What the process shares whose physicalFootprint was asked last; none when both figures are below
/// kLeastSharedBytes, or can't be told. Reads a file only where there is that much.
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

/// The fair share of memory of each of several processes, in bytes: what a process shares with
/// others is divided among them. None for one with more than kMostSharedOut resident, and for one
/// that can't be read.
using FairShares = std::vector<std::optional<std::uint64_t>>;
inline constexpr std::uint64_t kMostSharedOut = 16ULL << 30;

/// A question about fair shares. Once nobody holds it any more, no more is read for it.
class FairShareQuestion {
 public:
  virtual ~FairShareQuestion() = default;
  /// In the order of the pids, once all have been read; none until then.
  virtual std::optional<FairShares> answer() const = 0;
};

/// Has the shares of these processes of the user's own read on another thread, where questions wait
/// for each other: the kernel takes 10 ms for a GiB, and may take for ever. nullptr where they
/// can't be told at all.
[[nodiscard]] std::shared_ptr<const FairShareQuestion> askFairShares(
    const std::vector<std::int32_t>& pids);

}  // namespace platform
