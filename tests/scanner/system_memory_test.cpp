#include "scanner/system_memory.h"

#include <gtest/gtest.h>

#include "fakes/scripted_platform.h"
#include "platform/macos/used_memory.h"

namespace {

constexpr double kGiB = 1073741824;

TEST(SystemMemorySnapshot, IsInGibibytes) {
  resetMachine();
  machine().memory = {32 * kGiB, platform::MemoryInUse{12.5 * kGiB, 1.25 * kGiB}};
  const auto snapshot = SystemMemory::snapshot();
  EXPECT_EQ(snapshot.totalGB, 32);
  EXPECT_EQ(snapshot.usedGB, 12.5);
  EXPECT_EQ(snapshot.freeGB, 1.25);
}

TEST(SystemMemorySnapshot, StillTellsTheTotalWhenCountsCannotBeRead) {
  resetMachine();
  machine().memory = {32 * kGiB, std::nullopt};
  const auto snapshot = SystemMemory::snapshot();
  EXPECT_EQ(snapshot.totalGB, 32);
  EXPECT_EQ(snapshot.usedGB, 0);
  EXPECT_EQ(snapshot.freeGB, 0);
}

TEST(SystemMemorySnapshot, IsOfTheLimitWhereThereIsOne) {
  resetMachine();
  machine().memory.limit = platform::MemoryLimit{4 * kGiB, {3 * kGiB, 0.5 * kGiB}};
  const auto snapshot = SystemMemory::snapshot();
  EXPECT_TRUE(snapshot.isLimit);
  EXPECT_EQ(snapshot.totalGB, 4);
  EXPECT_EQ(snapshot.usedGB, 3);
  EXPECT_EQ(snapshot.freeGB, 0.5);
  machine().memory.limit.reset();
  EXPECT_FALSE(SystemMemory::snapshot().isLimit);
}

TEST(SystemMemorySnapshot, TellsSwapAndStallsOfTheMachineOrOfTheLimit) {
  resetMachine();
  EXPECT_FALSE(SystemMemory::snapshot().swappedGB);
  EXPECT_FALSE(SystemMemory::snapshot().stalls);
  machine().memory.swappedBytes = 2 * kGiB;
  machine().memory.stalls = platform::MemoryStalls{10, 5};
  EXPECT_EQ(SystemMemory::snapshot().swappedGB, 2);
  EXPECT_EQ(SystemMemory::snapshot().stalls, (platform::MemoryStalls{10, 5}));

  machine().memory.limit = platform::MemoryLimit{4 * kGiB, {3 * kGiB, 0}};
  EXPECT_FALSE(SystemMemory::snapshot().swappedGB);
  EXPECT_EQ(SystemMemory::snapshot().stalls, (platform::MemoryStalls{10, 5}));
  machine().memory.limit->swappedBytes = kGiB;
  machine().memory.limit->stalls = platform::MemoryStalls{1, 0};
  EXPECT_EQ(SystemMemory::snapshot().swappedGB, 1);
  EXPECT_EQ(SystemMemory::snapshot().stalls, (platform::MemoryStalls{1, 0}));
}

TEST(PageCounts, UsedIsWiredAppAndCompressed) {
  const platform::PageCounts pages{
      .free = 7, .speculative = 3, .wired = 100, .purgeable = 20, .internal = 50, .compressor = 5};
  const auto inUse = platform::memoryInUse(pages, 16384);
  EXPECT_EQ(inUse.usedBytes, 16384.0 * (100 + 30 + 5));
  EXPECT_EQ(inUse.freeBytes, 16384.0 * 10);
}

TEST(PageCounts, MorePurgeableThanInternalPagesIsNoAppMemoryRatherThanLess) {
  const platform::PageCounts pages{.wired = 10, .purgeable = 50, .internal = 20, .compressor = 1};
  EXPECT_EQ(platform::memoryInUse(pages, 4096).usedBytes, 4096.0 * 11);
}

TEST(PageCounts, AreUnsigned) {
  const platform::PageCounts pages{.wired = 4294967295U};
  EXPECT_EQ(platform::memoryInUse(pages, 4096).usedBytes, 4096.0 * 4294967295.0);
}

}  // namespace
