#include "platform/mapped_memory.h"

#include <unistd.h>

#include <condition_variable>
#include <memory>
#include <mutex>
#include <string>
#include <string_view>
#include <system_error>
#include <thread>

#include "platform/linux/memory_maps.h"
#include "platform/linux/process_reader.h"
#include "platform/linux/process_status.h"
#include "platform/linux/procfs.h"

namespace platform {
namespace {

/// A file of /proc that comes in pieces, up to `limit` bytes; "" when unreadable.
std::string wholeFile(std::int32_t pid, const char* file, std::size_t limit) {
  std::string bytes;
  const FileDescriptor opened = systemProc().open(pid, file);
  if (!opened.isOpen()) return bytes;
  constexpr std::size_t kPiece = 64 << 10;
  for (;;) {
    const std::size_t before = bytes.size();
    bytes.resize(before + kPiece);
    const ssize_t count = ::read(opened.get(), bytes.data() + before, kPiece);
    bytes.resize(before + static_cast<std::size_t>(count > 0 ? count : 0));
    if (count <= 0 || bytes.size() >= limit) return bytes;
  }
}

std::optional<std::uint64_t> fairShare(std::int32_t pid) {
  constexpr std::size_t kMost = 16 << 10;
  const auto resident = bytesInTable(wholeFile(pid, "status", kMost), "VmRSS");
  if (!resident || *resident > kMostSharedOut) return std::nullopt;
  return bytesInTable(wholeFile(pid, "smaps_rollup", kMost), "Pss");
}

/// One question about fair shares, and its answers so far. The thread that reads them has a part
/// in it, and in nothing else.
struct FairShares {
  std::mutex mutex;
  std::condition_variable changed;
  std::vector<std::int32_t> pids;
  std::vector<std::optional<std::uint64_t>> shares;
  bool isDone = false;
};

void readShares(const std::shared_ptr<FairShares>& question) {
  for (std::size_t i = 0; i < question->pids.size(); ++i) {
    const auto share = fairShare(question->pids[i]);
    const std::lock_guard lock(question->mutex);
    question->shares[i] = share;
  }
  const std::lock_guard lock(question->mutex);
  question->isDone = true;
  question->changed.notify_one();
}

}  // namespace

std::optional<SharedMemory> sharedMemory(std::int32_t pid) {
  return processReader().sharedMemory(pid);
}

std::vector<MappedFile> mappedFiles(std::int32_t pid, std::size_t most) {
  constexpr std::size_t kLongestMaps = 4 << 20;
  return filesInMaps(wholeFile(pid, "maps", kLongestMaps), most);
}

std::vector<std::optional<std::uint64_t>> fairShares(std::span<const std::int32_t> pids,
                                                     std::chrono::milliseconds budget) {
  static std::shared_ptr<FairShares> asked;
  std::vector<std::optional<std::uint64_t>> none(pids.size());
  if (asked) {
    const std::lock_guard lock(asked->mutex);
    if (!asked->isDone) return none;
  }
  asked = std::make_shared<FairShares>();
  asked->pids.assign(pids.begin(), pids.end());
  asked->shares = none;
  try {
    std::thread(readShares, asked).detach();
  } catch (const std::system_error&) {
    asked.reset();
    return none;
  }
  std::unique_lock lock(asked->mutex);
  asked->changed.wait_for(lock, budget, [] { return asked->isDone; });
  return asked->shares;
}

}  // namespace platform
