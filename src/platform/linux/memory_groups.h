#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace platform {

// What the kernel writes of the cgroups that account memory.

/// A mounted hierarchy of cgroups in which memory may be accounted.
struct MemoryHierarchy {
  int version = 2;  ///< of the interface: 1 or 2
  /// The cgroup that the mount shows, by its name in /proc/PID/cgroup: "/", or a container's.
  std::string root;
  std::string mountPoint;

  bool operator==(const MemoryHierarchy&) const = default;
};

/// Those in /proc/self/mountinfo, at most 16, in their order.
std::vector<MemoryHierarchy> memoryHierarchiesIn(std::string_view mountInfo);

/// A process's cgroup in such a hierarchy, from /proc/PID/cgroup: "/user.slice/a.scope"; "" when
/// it is in none. A cgroup outside of the reader's namespace begins with "/..".
std::string_view memoryGroupIn(std::string_view cgroup, int version);

/// Whether a cgroup is `above` or somewhere below it; both are named as in /proc/PID/cgroup. A
/// cgroup outside of the reader's namespace is not below anything.
bool isAtOrBelow(std::string_view group, std::string_view above);

/// `group` and all above it up to `root`, from the inside out; none when it is not below `root`,
/// and no more than 64.
std::vector<std::string_view> groupsUpwards(std::string_view group, std::string_view root);

/// The value of `key` in lines of "key value", such as memory.stat.
std::optional<std::uint64_t> valueIn(std::string_view lines, std::string_view key);

/// Of memory.stat: what the kernel gives up at once, files' pages above all. In bytes.
std::uint64_t reclaimableIn(std::string_view memoryStat, int version);

}  // namespace platform
