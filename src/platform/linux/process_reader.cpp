#include "platform/linux/process_reader.h"

#include <unistd.h>

#include <algorithm>

#include "platform/linux/mem_info.h"
#include "platform/linux/process_arguments.h"
#include "platform/linux/process_status.h"

namespace platform {
namespace {

/// exec takes 6 MiB at the most; only a process that moves the limits of its own block by
/// prctl has more, and no bound but this.
constexpr std::size_t kLongestBlock = 16 << 20;
constexpr std::size_t kLongestSmallFile = 1 << 20;

/// An open statm holds a page of the kernel's: no more than 1 MiB of them.
constexpr std::size_t kMostSizesKept = 256;

std::size_t sizesToKeep(std::size_t files) {
  return std::min(files / 4, kMostSizesKept);
}

}  // namespace

ProcessReader::ProcessReader(const ProcFs& proc) : ProcessReader(proc, platform::filesToKeep()) {}

ProcessReader::ProcessReader(const ProcFs& proc, std::size_t filesToKeep)
    : proc_(proc),
      blocks_(proc, "cmdline", filesToKeep - sizesToKeep(filesToKeep)),
      sizes_(proc, "statm", sizesToKeep(filesToKeep)),
      block_(kLongestBlock),
      small_(kLongestSmallFile),
      pageSize_(static_cast<std::uint64_t>(sysconf(_SC_PAGESIZE))) {}

std::vector<std::int32_t> ProcessReader::pids() {
  const auto memInfo = proc_.read("meminfo", small_);
  swapInUse_ = !memInfo || isSwapInUse(*memInfo);
  auto pids = proc_.pids();
  blocks_.keepOnly(pids);
  sizes_.keepOnly(pids);
  return pids;
}

bool ProcessReader::read(std::int32_t pid, ProcessFacts& facts) {
  facts.effectiveUid = proc_.owner(pid);
  if (!facts.effectiveUid) return false;
  lastPid_ = pid;
  lastOwner_ = *facts.effectiveUid;

  // An unreadable block is an empty one: the executable may still tell the name.
  const std::string_view block = blocks_.read(pid, *facts.effectiveUid, block_).value_or("");
  readArguments(block, {}, facts);
  if (needsOrigin(block, facts)) {
    ProcFs::Path path;
    ProcessOrigin origin{.executable = proc_.executable(pid, path)};
    if (origin.executable.empty()) {
      if (block.empty()) return false;  // a kernel thread or a zombie
      origin.comm = proc_.read(pid, "comm", small_).value_or("");
      if (origin.comm.ends_with('\n')) origin.comm.remove_suffix(1);
    }
    readArguments(block, origin, facts);
  }
  return !facts.name.empty();
}

std::optional<std::uint64_t> ProcessReader::footprint(std::int32_t pid) {
  if (swapInUse_) {
    const auto status = proc_.read(pid, "status", small_);
    return status ? footprintWithSwap(*status) : std::nullopt;
  }
  const auto statm =
      pid == lastPid_ ? sizes_.read(pid, lastOwner_, small_) : proc_.read(pid, "statm", small_);
  return statm ? residentFootprint(*statm, pageSize_) : std::nullopt;
}

std::optional<std::uint64_t> ProcessReader::startIdentity(std::int32_t pid) {
  const auto stat = proc_.read(pid, "stat", small_);
  return stat ? startTime(*stat) : std::nullopt;
}

ProcessReader& processReader() {
  static ProcessReader reader(systemProc());
  return reader;
}

}  // namespace platform
