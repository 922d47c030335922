#include "platform/linux/process_status.h"

#include <charconv>
#include <limits>

#include "text/split.h"

namespace platform {
namespace {

/// The number in field `index` (from 0) of a line of fields with single blanks between them.
std::optional<std::uint64_t> numberInField(std::string_view line, int index) {
  for (; index > 0; --index) {
    const auto blank = line.find(' ');
    if (blank == std::string_view::npos) return std::nullopt;
    line.remove_prefix(blank + 1);
  }
  std::uint64_t number = 0;
  const auto [end, error] = std::from_chars(line.data(), line.data() + line.size(), number);
  if (error != std::errc()) return std::nullopt;
  return number;
}

std::optional<std::uint64_t> bytesInValue(std::string_view value) {
  const auto digits = value.find_first_not_of(" \t");
  if (digits == std::string_view::npos) return std::nullopt;
  std::uint64_t kibibytes = 0;
  const char* const lineEnd = value.data() + value.size();
  const auto [end, error] = std::from_chars(value.data() + digits, lineEnd, kibibytes);
  constexpr std::uint64_t kBytes = 1024;
  if (error != std::errc() || kibibytes > std::numeric_limits<std::uint64_t>::max() / kBytes ||
      std::string_view(end, static_cast<std::size_t>(lineEnd - end)) != " kB") {
    return std::nullopt;
  }
  return kibibytes * kBytes;
}

}  // namespace

std::optional<std::uint64_t> bytesInTable(std::string_view table, std::string_view key) {
  while (!table.empty()) {
    const std::string_view line = text::takeUntil('\n', table);
    if (line.size() > key.size() && line.starts_with(key) && line[key.size()] == ':') {
      return bytesInValue(line.substr(key.size() + 1));
    }
  }
  return std::nullopt;
}

std::optional<std::uint64_t> residentFootprint(std::string_view statm, std::uint64_t pageSize) {
  const auto resident = numberInField(statm, 1);
  const auto shared = numberInField(statm, 2);
  if (!resident || !shared) return std::nullopt;
  // The kernel counts the two one after the other while the process runs, so `shared` may be more.
  return *resident > *shared ? (*resident - *shared) * pageSize : 0;
}

std::optional<std::uint64_t> footprintWithSwap(std::string_view status) {
  const auto anonymous = bytesInTable(status, "RssAnon");
  if (!anonymous) return bytesInTable(status, "VmRSS");
  return *anonymous + bytesInTable(status, "VmSwap").value_or(0);
}

std::uint64_t sharedInStatm(std::string_view statm, std::uint64_t pageSize) {
  const auto shared = numberInField(statm, 2).value_or(0);
  return shared > std::numeric_limits<std::uint64_t>::max() / pageSize ? 0 : shared * pageSize;
}

std::optional<SharedMemory> sharedInStatus(std::string_view status) {
  const SharedMemory memory{bytesInTable(status, "RssFile").value_or(0),
                            bytesInTable(status, "RssShmem").value_or(0)};
  const bool isMuch =
      memory.fileBytes >= kLeastSharedBytes || memory.sharedBytes >= kLeastSharedBytes;
  return isMuch ? std::optional(memory) : std::nullopt;
}

std::optional<ProcessStat> processStat(std::string_view stat) {
  // The second field is a name in parentheses, which may itself hold blanks and ")".
  const auto nameEnd = stat.rfind(") ");
  if (nameEnd == std::string_view::npos) return std::nullopt;
  stat.remove_prefix(nameEnd + 2);

  // Numbered as in proc(5). The state is the first field behind the name.
  constexpr int kState = 3;
  constexpr int kParent = 4;
  constexpr int kSession = 6;
  constexpr int kFlags = 9;
  constexpr int kThreads = 20;
  constexpr int kStartTime = 22;
  const auto parent = numberInField(stat, kParent - kState);
  const auto session = numberInField(stat, kSession - kState);
  const auto flags = numberInField(stat, kFlags - kState);
  const auto threads = numberInField(stat, kThreads - kState);
  const auto start = numberInField(stat, kStartTime - kState);
  if (!parent || !flags || !threads || !start) return std::nullopt;
  constexpr std::uint64_t kKernelThreadFlag = 0x00200000;  // PF_KTHREAD
  return ProcessStat{.startTicks = *start,
                     .parent = static_cast<std::int32_t>(*parent),
                     .session = static_cast<std::int32_t>(session.value_or(0)),
                     .threads = static_cast<int>(*threads),
                     .state = stat.front(),
                     .isKernelThread = (*flags & kKernelThreadFlag) != 0};
}

ProcessState stateOf(const ProcessStat& stat) {
  switch (stat.state) {
    case 'T':  // by a signal
    case 't':  // by a debugger
      return ProcessState::stopped;
    case 'Z':
    case 'X':
      return stat.threads > 1 ? ProcessState::runs : ProcessState::ended;
    default:
      return ProcessState::runs;
  }
}

}  // namespace platform
