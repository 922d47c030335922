#include "platform/linux/memory_groups.h"

#include <algorithm>
#include <limits>

#include "text/decimal.h"
#include "text/split.h"

namespace platform {
namespace {

bool isOctal(std::string_view digits) {
  return std::ranges::all_of(digits, [](char c) { return c >= '0' && c <= '7'; });
}

/// Blanks and backslashes in a path stand there as "\040".
std::string octalUnescaped(std::string_view text) {
  constexpr std::size_t kDigits = 3;
  std::string result;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const std::string_view digits = text.substr(i + 1).substr(0, kDigits);
    if (text[i] != '\\' || digits.size() < kDigits || !isOctal(digits)) {
      result += text[i];
      continue;
    }
    result += static_cast<char>((digits[0] - '0') * 64 + (digits[1] - '0') * 8 + digits[2] - '0');
    i += kDigits;
  }
  return result;
}

/// "35 31 0:32 / /sys/fs/cgroup/memory rw,relatime shared:9 - cgroup cgroup rw,memory"
std::optional<MemoryHierarchy> hierarchyIn(std::string_view line) {
  const std::size_t end = line.find(" - ");
  if (end == std::string_view::npos) return std::nullopt;
  std::string_view kind = line.substr(end + 3);
  const std::string_view type = text::takeUntil(' ', kind);
  text::takeUntil(' ', kind);
  const bool isSecond = type == "cgroup2";
  if (!isSecond && (type != "cgroup" || !text::holdsPart(kind, ',', "memory"))) return std::nullopt;

  std::string_view where = line.substr(0, end);
  for (int skipped = 0; skipped < 3; ++skipped) text::takeUntil(' ', where);
  MemoryHierarchy hierarchy;
  hierarchy.version = isSecond ? 2 : 1;
  hierarchy.root = octalUnescaped(text::takeUntil(' ', where));
  hierarchy.mountPoint = octalUnescaped(text::takeUntil(' ', where));
  if (!hierarchy.root.starts_with('/') || !hierarchy.mountPoint.starts_with('/'))
    return std::nullopt;
  return hierarchy;
}

bool isOutside(std::string_view group) {
  return group == "/.." || group.starts_with("/../");
}

}  // namespace

std::vector<MemoryHierarchy> memoryHierarchiesIn(std::string_view mountInfo) {
  constexpr std::size_t kMost = 16;
  std::vector<MemoryHierarchy> found;
  while (!mountInfo.empty() && found.size() < kMost) {
    if (auto hierarchy = hierarchyIn(text::takeUntil('\n', mountInfo)))
      found.push_back(*std::move(hierarchy));
  }
  return found;
}

std::string_view memoryGroupIn(std::string_view cgroup, int version) {
  while (!cgroup.empty()) {
    std::string_view path = text::takeUntil('\n', cgroup);  // "4:cpu,memory:/a", or "0::/a"
    const std::string_view number = text::takeUntil(':', path);
    const std::string_view controllers = text::takeUntil(':', path);
    const bool isIt = version == 1 ? text::holdsPart(controllers, ',', "memory")
                                   : number == "0" && controllers.empty();
    if (isIt && path.starts_with('/')) return path;
  }
  return {};
}

bool isAtOrBelow(std::string_view group, std::string_view above) {
  if (isOutside(group) || !group.starts_with(above) || above.empty()) return false;
  return above.ends_with('/') || group.size() == above.size() || group[above.size()] == '/';
}

std::vector<std::string_view> groupsUpwards(std::string_view group, std::string_view root) {
  constexpr std::size_t kMost = 64;
  std::vector<std::string_view> groups;
  while (isAtOrBelow(group, root) && groups.size() < kMost) {
    groups.push_back(group);
    if (group == root) break;
    const std::size_t slash = group.rfind('/');
    group = group.substr(0, std::max<std::size_t>(slash, 1));
  }
  return groups;
}

std::optional<std::uint64_t> valueIn(std::string_view lines, std::string_view key) {
  while (!lines.empty()) {
    std::string_view value = text::takeUntil('\n', lines);
    if (text::takeUntil(' ', value) == key) return text::decimal<std::uint64_t>(value);
  }
  return std::nullopt;
}

std::uint64_t reclaimableIn(std::string_view memoryStat, int version) {
  // In version 1 the plain keys leave out the cgroups below.
  const std::string_view keys[][3] = {
      {"total_inactive_file", "total_active_file", ""},
      {"inactive_file", "active_file", "slab_reclaimable"},
  };
  std::uint64_t sum = 0;
  for (const std::string_view key : keys[version == 1 ? 0 : 1]) {
    const std::uint64_t bytes = valueIn(memoryStat, key).value_or(0);
    sum += std::min(bytes, std::numeric_limits<std::uint64_t>::max() - sum);
  }
  return sum;
}

}  // namespace platform
