#include "platform/model_manifests.h"

#include <pthread.h>

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <csignal>
#include <exception>
#include <memory>
#include <mutex>
#include <thread>
#include <utility>

#include "platform/posix/manifest_files.h"

namespace platform {
namespace {

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
  auto asked = std::find_if(readings.begin(), readings.end(), isAsked);
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
