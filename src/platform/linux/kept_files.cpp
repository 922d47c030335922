#include "platform/linux/kept_files.h"

#include <sys/resource.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>

namespace platform {

void KeptFiles::keepOnly(const std::vector<std::int32_t>& pids) {
  last_ = -1;
  next_ = 0;
  auto pid = pids.begin();
  std::erase_if(kept_, [&](const Kept& kept) {
    while (pid != pids.end() && *pid < kept.pid) ++pid;
    return pid == pids.end() || *pid != kept.pid;
  });
}

/// Where the process's file is, or would be. Mostly it is the one after the last.
std::vector<KeptFiles::Kept>::iterator KeptFiles::placeOf(std::int32_t pid) {
  const auto at = [this](std::size_t i) {
    return kept_.begin() + static_cast<std::ptrdiff_t>(std::min(i, kept_.size()));
  };
  const auto next = at(next_);
  const bool isNext = next != kept_.end() && next->pid == pid;
  const auto place = isNext ? next : std::ranges::lower_bound(kept_, pid, {}, &Kept::pid);
  next_ = static_cast<std::size_t>(place - kept_.begin()) + 1;
  return place;
}

std::optional<std::string_view> KeptFiles::read(std::int32_t pid, std::uint32_t owner,
                                                FileReader& reader) {
  auto place = placeOf(pid);
  if (place != kept_.end() && place->pid == pid) {
    if (place->owner == owner) {
      if (const auto content = reader.read(place->file.get())) {
        last_ = place->file.get();
        lastWasKept_ = true;
        return content;
      }
    }
    place = kept_.erase(place);
  }

  FileDescriptor file = proc_.open(pid, file_);
  last_ = file.get();
  lastWasKept_ = false;
  if (!file.isOpen()) return std::nullopt;
  const auto content = reader.read(file.get());
  if (content && kept_.size() < most_) {
    kept_.insert(place, {pid, owner, std::move(file)});
  } else {
    unkept_ = std::move(file);
  }
  return content;
}

std::optional<bool> KeptFiles::isStillThere() const {
  if (last_ < 0) return std::nullopt;
  // Reading the file of a process that is gone fails, even if the pid has a new owner.
  char byte = 0;
  ssize_t count = 0;
  do {
    count = pread(last_, &byte, sizeof byte, 0);
  } while (count < 0 && errno == EINTR);
  return count >= 0;
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
