#include "platform/mapped_memory.h"

#include <unistd.h>

#include <memory>
#include <mutex>
#include <string>
#include <string_view>
#include <system_error>
#include <thread>
#include <utility>

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

class Question : public FairShareQuestion {
 public:
  explicit Question(std::vector<std::int32_t> pids) : pids_(std::move(pids)) {}

  std::optional<FairShares> answer() const override {
    const std::lock_guard lock(mutex_);
    return shares_.size() == pids_.size() ? std::optional(shares_) : std::nullopt;
  }

  /// The process whose share is to be read next; none when all have been read.
  std::optional<std::int32_t> next() const {
    const std::lock_guard lock(mutex_);
    return shares_.size() < pids_.size() ? std::optional(pids_[shares_.size()]) : std::nullopt;
  }
  void take(std::optional<std::uint64_t> share) {
    const std::lock_guard lock(mutex_);
    shares_.push_back(share);
  }

 private:
  const std::vector<std::int32_t> pids_;
  mutable std::mutex mutex_;
  FairShares shares_;
};

/// The thread that reads, which runs while there are questions. It shares the life of what it works
/// on: it may still read when the program ends.
class Reading : public std::enable_shared_from_this<Reading> {
 public:
  /// False when there can be no thread.
  bool ask(std::weak_ptr<Question> question) {
    const std::lock_guard lock(mutex_);
    std::erase_if(waiting_, [](const auto& one) { return one.expired(); });
    waiting_.push_back(std::move(question));
    if (runs_) return true;
    try {
      std::thread([self = shared_from_this()] { self->run(); }).detach();
    } catch (const std::system_error&) {
      waiting_.clear();
      return false;
    }
    return runs_ = true;
  }

 private:
  void run() {
    while (const auto question = next()) read(*question);
  }

  std::optional<std::weak_ptr<Question>> next() {
    const std::lock_guard lock(mutex_);
    runs_ = !waiting_.empty();
    if (!runs_) return std::nullopt;
    const auto question = waiting_.back();  // what somebody looks at now
    waiting_.pop_back();
    return question;
  }

  /// Holds the question between two reads only: once its asker has dropped it, no more is read.
  static void read(const std::weak_ptr<Question>& question) {
    while (const auto pid = nextOf(question.lock())) {
      const auto share = fairShare(*pid);
      if (const auto asked = question.lock()) asked->take(share);
    }
  }
  static std::optional<std::int32_t> nextOf(const std::shared_ptr<Question>& question) {
    return question ? question->next() : std::nullopt;
  }

  std::mutex mutex_;
  std::vector<std::weak_ptr<Question>> waiting_;
  bool runs_ = false;
};

}  // namespace

std::optional<SharedMemory> sharedMemory(std::int32_t pid) {
  return processReader().sharedMemory(pid);
}

std::vector<MappedFile> mappedFiles(std::int32_t pid, std::size_t most) {
  constexpr std::size_t kLongestMaps = 4 << 20;
  return filesInMaps(wholeFile(pid, "maps", kLongestMaps), most);
}

std::shared_ptr<const FairShareQuestion> askFairShares(const std::vector<std::int32_t>& pids) {
  static const auto reading = std::make_shared<Reading>();
  auto question = std::make_shared<Question>(pids);
  return reading->ask(question) ? question : nullptr;
}

}  // namespace platform
