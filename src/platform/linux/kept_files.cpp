#include "platform/linux/kept_files.h"

#include <sys/resource.h>

#include <algorithm>

namespace platform {

void KeptFiles::keepOnly(const std::vector<std::int32_t>& pids) {
  std::erase_if(kept_, [&pids](const Kept& kept) {
    return !std::binary_search(pids.begin(), pids.end(), kept.pid);
  });
}

std::optional<std::string_view> KeptFiles::read(std::int32_t pid, std::uint32_t owner,
                                                FileReader& reader) {
  auto place =
      std::lower_bound(kept_.begin(), kept_.end(), pid,
                       [](const Kept& kept, std::int32_t wanted) { return kept.pid < wanted; });
  if (place != kept_.end() && place->pid == pid) {
    if (place->owner == owner) {
      if (const auto content = reader.read(place->file.get())) return content;
    }
    place = kept_.erase(place);
  }

  FileDescriptor file = proc_.open(pid, file_);
  if (!file.isOpen()) return std::nullopt;
  const auto content = reader.read(file.get());
  if (content && kept_.size() < most_) kept_.insert(place, {pid, owner, std::move(file)});
  return content;
}

std::size_t filesToKeep() {
  constexpr rlim_t kMost = 4096;
  constexpr rlim_t kLeastLeft = 64;
  rlimit limit = {};
  if (getrlimit(RLIMIT_NOFILE, &limit) != 0) return 0;
  const rlim_t left = std::max(limit.rlim_cur / 4, kLeastLeft);
  return static_cast<std::size_t>(std::min(limit.rlim_cur - std::min(limit.rlim_cur, left), kMost));
}

}  // namespace platform
