#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace platform {

/// How much of a command line is read, in bytes.
inline constexpr std::size_t kLongestCommandLine = 64 << 10;

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
  bool isCut = false;                         ///< there were more arguments than are read
  std::optional<std::uint32_t> effectiveUid;  ///< whose rights it has; none when unknown
  std::optional<std::int32_t> parent;         ///< whose child it is; none when unknown
  /// When it started, or up to one tick of the system's clock later, on the clock of
  /// processClock(); none when unknown.
  std::optional<std::uint64_t> startTime;
  /// A number that no other process has or will have together with this pid while the
  /// machine is up; none when it can't be told. Set by confirmProcess alone.
  std::optional<std::uint64_t> identity;
};

/// Every process id, each > 0, in the system's order; empty when they can't be listed. Also reads
/// what is needed once for the whole scan that follows (Linux: whether any swap is in use).
std::vector<std::int32_t> allPids();

/// Reads one process into `facts`. False when there is nothing to show: it is gone, or
/// has neither arguments nor an executable. Arguments that are empty or not UTF-8 are
/// left out; of longer command lines than kLongestCommandLine only the arguments that fit whole
/// are read (the first of them cut where it alone is too long).
[[nodiscard]] bool readProcess(std::int32_t pid, ProcessFacts& facts);

/// The memory that the process itself uses, in bytes; none when unreadable.
std::optional<std::uint64_t> physicalFootprint(std::int32_t pid);

/// To be called last, for the process of the last readProcess: whether everything that was read of
/// this pid since then belongs to one process. False when that has ended in the meantime, so that
/// the pid may belong to another: then nothing that was read may be used. When it is not known
/// which process it was, returns true and leaves facts.identity empty.
[[nodiscard]] bool confirmProcess(std::int32_t pid, ProcessFacts& facts);

/// ProcessFacts::identity of the process that has the pid now; none when it is gone or can't
/// be told. Linux: the inode of its pidfd where the kernel never gives one twice (6.9 and
/// later, 64 bits), else made from when it started, its executable and its arguments; macOS:
/// when it started, in microseconds.
std::optional<std::uint64_t> processIdentity(std::int32_t pid);

/// How a process can react to a request to quit.
enum class ProcessState {
  runs,     ///< it can answer
  stopped,  ///< it reacts when it is continued
  ended,    ///< it has ended, but its parent has not reaped it yet
};

/// The state of the process that has the pid now; none when it is gone or not known.
std::optional<ProcessState> processState(std::int32_t pid);

/// The present time in nanoseconds, on the clock of the start times (Linux: since boot, sleep
/// included; macOS: since 1970).
std::uint64_t processClock();

/// The program's own process id.
std::int32_t ownPid();

}  // namespace platform
