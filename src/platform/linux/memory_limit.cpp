#include "platform/linux/memory_limit.h"

#include <algorithm>

#include "platform/linux/file_tree.h"
#include "platform/linux/memory.h"
#include "platform/linux/process_status.h"

namespace platform {
namespace {

/// The limit that stands in a cgroup, in bytes; none for "max" and where there is no such file.
std::optional<std::uint64_t> limitOf(const std::string& folder, int version) {
  return FileTree(folder).number(version == 1 ? "memory.limit_in_bytes" : "memory.max");
}

/// Whether a cgroup of version 1 leaves out the cgroups below it, as they once could.
bool standsAlone(const std::string& folder, int version) {
  return version == 1 && FileTree(folder).number("memory.use_hierarchy") == 0;
}

}  // namespace

std::optional<MemoryLimit> MemoryLimitReader::read(double installedBytes, Clock::time_point now) {
  if (!lookedUpAt_ || now - *lookedUpAt_ >= kLookUpEvery) {
    limited_ = lookUp(installedBytes);
    lookedUpAt_ = now;
  }
  if (!limited_ || limited_->limitBytes < kLeastBytes) return std::nullopt;
  const auto limit = usageOf(*limited_);
  if (!limit) lookedUpAt_.reset();  // it has gone
  return limit;
}

/// In a machine with hierarchies of both versions, memory is accounted in the first.
std::optional<MemoryLimitReader::Limited> MemoryLimitReader::lookUp(double installedBytes) {
  const std::string ownCgroup(proc_.read("self/cgroup", reader_).value_or(""));
  FileReader mounts(1 << 20);
  const auto hierarchies = memoryHierarchiesIn(proc_.read("self/mountinfo", mounts).value_or(""));
  for (const int version : {1, 2}) {
    const std::string_view own = memoryGroupIn(ownCgroup, version);
    for (const MemoryHierarchy& hierarchy : hierarchies) {
      if (hierarchy.version == version && isAtOrBelow(own, hierarchy.root)) {
        return smallest(hierarchy, own, installedBytes);
      }
    }
  }
  return std::nullopt;
}

std::optional<MemoryLimitReader::Limited> MemoryLimitReader::smallest(
    const MemoryHierarchy& hierarchy, std::string_view ownGroup, double installedBytes) {
  std::optional<Limited> found;
  bool isReached = true;  // what the processes in `ownGroup` hold counts here, too
  bool holdsAll = false;  // every process is in it; then also in those further up
  for (const std::string_view group : groupsUpwards(ownGroup, hierarchy.root)) {
    const std::size_t inside = hierarchy.root == "/" ? 0 : hierarchy.root.size();
    std::string folder = prefix_ + hierarchy.mountPoint;
    folder += group.substr(inside);
    if (!isReached) break;
    isReached = !standsAlone(folder, hierarchy.version) || group == ownGroup;
    const auto limit = limitOf(folder, hierarchy.version);
    if (!limit || !isReached) continue;
    const auto limitBytes = static_cast<double>(*limit);
    if (limitBytes >= (found ? found->limitBytes : installedBytes)) continue;
    holdsAll = holdsAll || holdsEverybody(group, hierarchy.version);
    if (holdsAll) found = {folder, hierarchy.version, limitBytes};
  }
  return found;
}

/// The first process comes first: where it is outside, as on any desktop, nobody else is asked.
bool MemoryLimitReader::holdsEverybody(std::string_view group, int version) {
  std::vector<std::int32_t> pids;
  proc_.listPids(pids);
  return !pids.empty() && std::ranges::none_of(pids, [this, group, version](std::int32_t pid) {
    return isOutside(pid, group, version);
  });
}

/// Kernel threads and what has ended are in no limit, and not listed. Nor is what can't be read.
bool MemoryLimitReader::isOutside(std::int32_t pid, std::string_view group, int version) {
  const auto cgroup = proc_.read(pid, "cgroup", reader_);
  if (!cgroup || isAtOrBelow(memoryGroupIn(*cgroup, version), group)) return false;
  const auto text = proc_.read(pid, "stat", reader_);
  const auto stat = text ? processStat(*text) : std::nullopt;
  return stat && !stat->isKernelThread && stateOf(*stat) != ProcessState::ended;
}

std::optional<MemoryLimit> MemoryLimitReader::usageOf(const Limited& limited) {
  const FileTree group(limited.folder);
  const bool isFirst = limited.version == 1;
  const auto current = group.number(isFirst ? "memory.usage_in_bytes" : "memory.current");
  if (!current) return std::nullopt;
  const std::string stat = group.text("memory.stat").value_or("");
  const std::uint64_t reclaimable = reclaimableIn(stat, limited.version);
  const auto swapped = isFirst ? valueIn(stat, "total_swap") : group.number("memory.swap.current");
  const auto held = static_cast<double>(*current);
  MemoryLimit limit{.totalBytes = limited.limitBytes};
  limit.inUse.usedBytes = held - std::min(held, static_cast<double>(reclaimable));
  limit.inUse.freeBytes = std::max(limited.limitBytes - held, 0.0);
  if (swapped) limit.swappedBytes = static_cast<double>(*swapped);
  limit.stalls = stallsIn(group.text("memory.pressure").value_or(""));
  return limit;
}

}  // namespace platform
