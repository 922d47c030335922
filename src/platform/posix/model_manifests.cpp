#include "platform/model_manifests.h"

#include <dirent.h>
#include <fcntl.h>
#include <pthread.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <condition_variable>
#include <csignal>
#include <exception>
#include <memory>
#include <mutex>
#include <string_view>
#include <thread>
#include <utility>

#include "text/unicode.h"

namespace platform {
namespace {

/// REGISTRY/NAMESPACE/MODEL/TAG
constexpr int kDeepest = 4;
constexpr std::size_t kMostEntries = 4096;

struct CloseFolder {
  void operator()(DIR* folder) const { closedir(folder); }
};
using Folder = std::unique_ptr<DIR, CloseFolder>;

/// The entries of an open folder; takes over its descriptor.
Folder folderOf(int descriptor) {
  if (descriptor < 0) return nullptr;
  Folder folder(fdopendir(descriptor));
  if (!folder) close(descriptor);
  return folder;
}

class ManifestWalk {
 public:
  explicit ManifestWalk(std::uint32_t owner) : owner_(owner) {}

  void readFolder(const Folder& folder, const std::string& path, int depth) {
    if (!folder) return;
    while (const dirent* const entry = readdir(folder.get())) {
      if (++entries_ > kMostEntries || manifests_.size() >= kMostModelManifests) return;
      const std::string_view name = entry->d_name;
      if (name.starts_with('.') || !text::isUtf8(name)) continue;
      const std::string below = path.empty() ? std::string(name) : path + "/" + std::string(name);
      const int at = dirfd(folder.get());
      struct stat status = {};
      if (fstatat(at, entry->d_name, &status, AT_SYMLINK_NOFOLLOW) != 0) continue;
      if (S_ISDIR(status.st_mode) && depth < kDeepest) {
        constexpr int kFlags = O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC;
        readFolder(folderOf(openat(at, entry->d_name, kFlags)), below, depth + 1);
      } else if (S_ISREG(status.st_mode)) {
        if (auto text = readFile(at, entry->d_name))
          manifests_.push_back({below, std::move(*text)});
      }
    }
  }

  std::vector<ModelManifest> manifests() { return std::move(manifests_); }

 private:
  std::optional<std::string> readFile(int folder, const char* name) const {
    // O_NONBLOCK: it may have become a pipe meanwhile, and opening that would wait.
    const int file =
        openat(folder, name, O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
    if (file < 0) return std::nullopt;
    auto text = readOwned(file);
    close(file);
    return text;
  }

  std::optional<std::string> readOwned(int file) const {
    struct stat status = {};
    if (fstat(file, &status) != 0 || !S_ISREG(status.st_mode)) return std::nullopt;
    if (status.st_uid != owner_ && status.st_uid != 0) return std::nullopt;
    if (status.st_size < 0 || static_cast<std::size_t>(status.st_size) > kLongestModelManifest) {
      return std::nullopt;
    }
    std::string text(static_cast<std::size_t>(status.st_size), '\0');
    std::size_t length = 0;
    while (length < text.size()) {
      const ssize_t count = read(file, text.data() + length, text.size() - length);
      if (count < 0 && errno == EINTR) continue;
      if (count <= 0) break;
      length += static_cast<std::size_t>(count);
    }
    text.resize(length);
    if (!text::isUtf8(text)) return std::nullopt;
    return text;
  }

  std::uint32_t owner_;
  std::size_t entries_ = 0;
  std::vector<ModelManifest> manifests_;
};

/// Reads what readModelManifests returns, waiting for the file system as long as it takes; for a
/// thread of its own.
std::vector<ModelManifest> manifestFiles(const std::string& modelFolder, std::uint32_t owner) {
  ManifestWalk walk(owner);
  constexpr int kFlags = O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC;
  walk.readFolder(folderOf(open((modelFolder + "/manifests").c_str(), kFlags)), {}, 1);
  return walk.manifests();
}

/// A reading on a thread of its own, which takes as long as it takes: nobody joins the thread.
class ManifestReading {
 public:
  ManifestReading(std::string modelFolder, std::uint32_t owner)
      : modelFolder_(std::move(modelFolder)), owner_(owner) {}

  bool isOf(const std::string& modelFolder, std::uint32_t owner) const {
    return modelFolder_ == modelFolder && owner_ == owner;
  }

  void read() {
    auto manifests = manifestFiles(modelFolder_, owner_);
    const std::lock_guard lock(mutex_);
    manifests_ = std::move(manifests);
    done_.notify_one();
  }

  bool isDone() {
    const std::lock_guard lock(mutex_);
    return manifests_.has_value();
  }

  /// What was read; none when that takes longer than `budget`.
  std::optional<std::vector<ModelManifest>> take(std::chrono::milliseconds budget) {
    std::unique_lock lock(mutex_);
    done_.wait_for(lock, budget, [this] { return manifests_.has_value(); });
    return std::move(manifests_);
  }

 private:
  const std::string modelFolder_;
  const std::uint32_t owner_;
  std::mutex mutex_;
  std::condition_variable done_;
  std::optional<std::vector<ModelManifest>> manifests_;
};

/// False when there is no thread to be had.
bool startReading(const std::shared_ptr<ManifestReading>& reading) {
  // Signals are the main thread's.
  sigset_t all;
  sigset_t before;
  sigfillset(&all);
  if (pthread_sigmask(SIG_SETMASK, &all, &before) != 0) return false;
  bool isStarted = true;
  try {
    std::thread([reading] {
      try {
        reading->read();
      } catch (const std::exception&) {
        return;  // out of memory: it never answers
      }
    }).detach();
  } catch (const std::exception&) {
    isStarted = false;
  }
  pthread_sigmask(SIG_SETMASK, &before, nullptr);
  return isStarted;
}

}  // namespace

std::optional<std::vector<ModelManifest>> readModelManifests(const std::string& modelFolder,
                                                             std::uint32_t owner) {
  using std::chrono::milliseconds;
  constexpr milliseconds kBudget(50);
  constexpr std::size_t kMostReadings = 4;
  static std::vector<std::shared_ptr<ManifestReading>> readings;  // of the main thread alone

  if (!modelFolder.starts_with('/')) return std::vector<ModelManifest>();
  const auto isAsked = [&](const auto& reading) { return reading->isOf(modelFolder, owner); };
  // Finished readings that nobody came back for are dropped: they may be out of date.
  std::erase_if(readings,
                [&](const auto& reading) { return !isAsked(reading) && reading->isDone(); });
  auto asked = std::ranges::find_if(readings, isAsked);
  milliseconds budget(0);
  if (asked == readings.end()) {
    if (readings.size() >= kMostReadings) return std::nullopt;
    if (readings.empty()) budget = kBudget;
    auto reading = std::make_shared<ManifestReading>(modelFolder, owner);
    if (!startReading(reading)) return std::nullopt;
    readings.push_back(std::move(reading));
    asked = readings.end() - 1;
  }
  auto manifests = (*asked)->take(budget);
  if (manifests) readings.erase(asked);
  return manifests;
}

}  // namespace platform
