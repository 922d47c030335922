#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace platform {

/// How much of a command line is read, in bytes.
inline constexpr std::size_t kLongestCommandLine = 64 << 10;

/// Stands for bytes that were read: those of two equal fingerprints are equal. Made with a number
/// of chance, so that nobody can choose bytes that share one; it means nothing to another program.
struct Fingerprint {
  std::uint64_t low = 0;
  std::uint64_t high = 0;
  bool operator==(const Fingerprint&) const = default;
};

/// What the system tells of one process. The buffers keep their capacity from one process to the
/// next, so that a scan allocates for its largest process only.
struct ProcessFacts {
  ProcessFacts() = default;
  ProcessFacts(const ProcessFacts&) = delete;  // `arguments` points into `commandLine`
  ProcessFacts& operator=(const ProcessFacts&) = delete;

  // Set by lookAtProcess.

  std::optional<std::uint32_t> effectiveUid;  ///< whose rights it has; none when unknown
  std::optional<std::int32_t> parent;         ///< whose child it is; none when unknown
  std::optional<std::int32_t> session;        ///< the pid that began its session; none when unknown
  /// When it started, or up to one tick of the system's clock later, on the clock of
  /// processClock(); none when unknown.
  std::optional<std::uint64_t> startTime;
  /// Fingerprint of when it started and of its arguments as they are now. While this and what
  /// executableOfProcess() answers stay the same, readCommandLine would tell the same. None: the
  /// command line has to be read each time.
  std::optional<Fingerprint> fingerprint;

  // Set by readCommandLine.

  std::string name;                         ///< last path component of the first argument,
                                            ///< else of the executable's path; never empty
  std::string commandLine;                  ///< the arguments joined by single spaces
  std::vector<std::string_view> arguments;  ///< each valid UTF-8 and not empty
  bool isCut = false;                       ///< there were more arguments than are read
  /// Fingerprint of the executable's path, where `name` or `arguments` depend on it; else none.
  std::optional<Fingerprint> executable;
  /// Where the executable only decides whether a title is one argument or several: that title,
  /// valid until another process is looked at. Else "".
  std::string_view title;

  /// A number that no other process has or will have together with this pid while the
  /// machine is up; none when it can't be told. Set by confirmProcess alone.
  std::optional<std::uint64_t> identity;
};

/// Every process id, each > 0, in the system's order, valid until the next call; empty when they
/// can't be listed. To be called first in a scan: what holds for the whole machine during the scan
/// is looked at here, too (Linux: whether any swap is in use).
std::span<const std::int32_t> allPids();

/// Looks at one process, and leaves what it runs unread. False when there is nothing to show: it
/// is gone, or runs no program.
[[nodiscard]] bool lookAtProcess(std::int32_t pid, ProcessFacts& facts);

/// Reads what the process runs that was looked at last, as it was then. False when there is
/// nothing to show: it has neither arguments nor an executable. Arguments that are empty or not
/// UTF-8 are left out; of longer command lines than kLongestCommandLine only the arguments that
/// fit whole are read (the first of them cut where it alone is too long).
[[nodiscard]] bool readCommandLine(ProcessFacts& facts);

/// ProcessFacts::executable of the process that was looked at last, as it is now. Only for a
/// process for which readCommandLine has set it.
std::optional<Fingerprint> executableOfProcess();

/// The memory that the process itself uses, in bytes; none when unreadable.
std::optional<std::uint64_t> physicalFootprint(std::int32_t pid);

/// To be asked last of the process that was looked at last: whether all that was asked of this
/// pid since then was about one and the same process. False when that has ended meanwhile: the pid
/// may be another process's by now, so nothing that was read counts. Where processes can't be told
/// apart, this is true and facts.identity stays empty.
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
