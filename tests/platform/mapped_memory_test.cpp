// Of the test's own process, which maps a file and shares memory.
#include "platform/mapped_memory.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/mman.h>
#include <unistd.h>

#include <chrono>
#include <cstring>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include "platform/processes.h"
#include "tools/child_process.h"
#include "tools/temp_folder.h"

namespace {

constexpr std::size_t kSize = 320 << 20;

/// Memory that is mapped and touched.
class Mapping {
 public:
  explicit Mapping(int fd) : at_(mmap(nullptr, kSize, PROT_READ, MAP_SHARED, fd, 0)) {
    const auto* bytes = static_cast<const volatile char*>(at_);
    for (std::size_t i = 0; i < kSize; i += 4096) static_cast<void>(bytes[i]);
  }
  ~Mapping() { munmap(at_, kSize); }
  Mapping(const Mapping&) = delete;
  Mapping& operator=(const Mapping&) = delete;

 private:
  void* at_;
};

std::optional<platform::SharedMemory> ownShared() {
  platform::physicalFootprint(getpid());
  return platform::sharedMemory(getpid());
}

TEST(MappedMemory, IsToldOfWhereThereIsMuch) {
  EXPECT_FALSE(ownShared()) << "a test program maps little";
  const TempFolder folder;
  const std::string path = folder / "weights.gguf";
  const int file = open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600);
  ASSERT_EQ(ftruncate(file, kSize), 0);
  const Mapping mapping(file);
  close(file);

  const auto shared = ownShared();
  ASSERT_TRUE(shared);
  EXPECT_GE(shared->fileBytes + shared->sharedBytes, kSize);  // a tmpfs counts as shared memory
  const auto files = platform::mappedFiles(getpid(), 1);
  ASSERT_EQ(files.size(), 1U);
  EXPECT_EQ(files[0], (platform::MappedFile{path, kSize}));
}

TEST(MappedMemory, TellsSharedMemoryApart) {
  const int memory = memfd_create("pool", MFD_CLOEXEC);
  ASSERT_EQ(ftruncate(memory, kSize), 0);
  const Mapping mapping(memory);
  close(memory);
  const auto shared = ownShared();
  ASSERT_TRUE(shared);
  EXPECT_GE(shared->sharedBytes, kSize);
  EXPECT_LT(shared->fileBytes, kSize);
}

/// Empty when there is none after a minute.
platform::FairShares answerTo(const platform::FairShareQuestion& question) {
  const auto deadline = std::chrono::steady_clock::now() + std::chrono::minutes(1);
  while (std::chrono::steady_clock::now() < deadline) {
    if (auto shares = question.answer()) return *shares;
    std::this_thread::sleep_for(std::chrono::milliseconds(1));
  }
  return {};
}

TEST(FairShares, AreOfEachProcessThatCanBeRead) {
  ChildProcess child(playProcess({"--memory", "64"}));
  const auto question = platform::askFairShares({child.pid(), 1 << 30, getpid()});
  const platform::FairShares shares = answerTo(*question);
  ASSERT_EQ(shares.size(), 3U);
  ASSERT_TRUE(shares[0]);
  EXPECT_GE(*shares[0], 64U << 20);
  EXPECT_LE(*shares[0], 80U << 20);
  EXPECT_FALSE(shares[1]);
  EXPECT_TRUE(shares[2]);
}

/// The same 64 MB, mapped so often that they count as more than `bytes` resident.
class ManyTimesResident {
 public:
  explicit ManyTimesResident(std::uint64_t bytes) {
    constexpr std::size_t kPart = 64 << 20;
    const int memory = memfd_create("part", MFD_CLOEXEC);
    if (ftruncate(memory, kPart) != 0) return;
    for (std::uint64_t mapped = 0; mapped <= bytes; mapped += kPart) {
      void* const at = mmap(nullptr, kPart, PROT_READ, MAP_SHARED | MAP_POPULATE, memory, 0);
      if (at == MAP_FAILED) break;
      parts_.emplace_back(at, [](void* part) { munmap(part, kPart); });
    }
    close(memory);
  }

 private:
  std::vector<std::shared_ptr<void>> parts_;
};

TEST(FairShares, AreNotReadOfAProcessWithMoreThanSixteenGigabytes) {
  ASSERT_EQ(platform::kMostSharedOut, 16ULL << 30);
  {
    const ManyTimesResident resident(platform::kMostSharedOut);
    EXPECT_EQ(answerTo(*platform::askFairShares({getpid()})), platform::FairShares{std::nullopt});
  }
  const platform::FairShares shares = answerTo(*platform::askFairShares({getpid()}));
  ASSERT_EQ(shares.size(), 1U);
  EXPECT_TRUE(shares[0]);
}

TEST(FairShares, QuestionsWaitForEachOther) {
  ASSERT_NE(platform::askFairShares({getpid()}), nullptr);  // nobody waits for it any more
  std::vector<std::shared_ptr<const platform::FairShareQuestion>> questions(20);
  for (auto& question : questions) question = platform::askFairShares({getpid()});
  for (const auto& question : questions) {
    ASSERT_NE(question, nullptr);
    const platform::FairShares shares = answerTo(*question);
    ASSERT_EQ(shares.size(), 1U);
    EXPECT_TRUE(shares[0]);
  }
  EXPECT_TRUE(platform::askFairShares({})->answer()) << "of nobody it is there at once";
}

}  // namespace
