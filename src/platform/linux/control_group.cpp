#include "platform/linux/control_group.h"

#include <algorithm>
#include <vector>

#include "platform/linux/file_reader.h"
#include "platform/linux/procfs.h"
#include "platform/process_place.h"
#include "text/ascii.h"
#include "text/split.h"

namespace platform {
namespace {

constexpr std::size_t kLongestControlGroups = 16 << 10;
constexpr std::size_t kLongestName = 128;
constexpr std::size_t kShownOfId = 12;  // as container managers shorten them
constexpr std::size_t kShortestId = 32;

bool isHarmless(std::string_view name) {
  return !name.empty() && name.size() <= kLongestName && std::ranges::all_of(name, [](char c) {
    return text::isAlphanumeric(c) || std::string_view(":_.@-").find(c) != std::string_view::npos;
  });
}

bool isId(std::string_view name) {
  return name.size() >= kShortestId && std::ranges::all_of(name, text::isHexDigit);
}

/// What a container is called whose group is "docker-3f2a….scope", or "3f2a…" in a folder "docker";
/// "" for what is no container.
std::string container(std::string_view name, std::string_view folder) {
  if (name.ends_with(".scope")) name.remove_suffix(std::string_view(".scope").size());
  const std::size_t dash = name.rfind('-');
  const std::string_view id = dash == std::string_view::npos ? name : name.substr(dash + 1);
  if (!isId(id)) return {};
  const std::string_view manager = dash == std::string_view::npos ? folder : name.substr(0, dash);
  const std::string shown(id.substr(0, kShownOfId));
  return "Container: " + (isHarmless(manager) ? std::string(manager) + " " + shown : shown);
}

std::string unit(std::string_view name) {
  const bool isUnit = name.ends_with(".service") || name.ends_with(".scope");
  return isUnit && isHarmless(name) ? "Unit: " + std::string(name) : std::string();
}

/// The path in the unified hierarchy or in systemd's own, which came before it; the longer of them.
std::string_view pathIn(std::string_view cgroup) {
  std::string_view path;
  while (!cgroup.empty()) {
    const std::string_view line = text::takeUntil('\n', cgroup);
    const std::size_t slash = line.find(":/");
    if (slash == std::string_view::npos) continue;
    const std::string_view hierarchy = line.substr(0, slash);
    const std::string_view here = line.substr(slash + 1);
    const bool counts = hierarchy.starts_with("0:") || hierarchy.ends_with(":name=systemd");
    if (counts && here.size() > path.size()) path = here;
  }
  return path;
}

}  // namespace

std::string placeInControlGroups(std::string_view cgroup) {
  const std::vector<std::string_view> names = text::partsOf(pathIn(cgroup), '/');
  for (std::size_t i = names.size(); i-- > 0;) {
    std::string found = container(names[i], i > 0 ? names[i - 1] : std::string_view());
    if (!found.empty()) return found;
  }
  for (std::size_t i = names.size(); i-- > 0;) {
    std::string found = unit(names[i]);
    if (!found.empty()) return found;
  }
  return {};
}

std::string placeOfProcess(std::int32_t pid) {
  FileReader reader(kLongestControlGroups);
  const auto cgroup = ProcFs("/proc").read(pid, "cgroup", reader);
  return cgroup ? placeInControlGroups(*cgroup) : std::string();
}

std::optional<std::string> workingFolderOfProcess(std::int32_t pid) {
  ProcFs::Path path;
  const std::string_view folder = systemProc().target(pid, "cwd", path);
  return folder.starts_with('/') ? std::optional(std::string(folder)) : std::nullopt;
}

}  // namespace platform
