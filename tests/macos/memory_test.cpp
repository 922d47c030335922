#include "platform/memory.h"

#include <gtest/gtest.h>

#include "macos/mac_test.h"

namespace {

using darwin::kernel;

class Memory : public MacTest {};

TEST_F(Memory, IsCountedInPages) {
  kernel().pages.free_count = 10;
  kernel().pages.speculative_count = 2;
  kernel().pages.wire_count = 100;
  kernel().pages.purgeable_count = 5;
  kernel().pages.internal_page_count = 1000;
  kernel().pages.compressor_page_count = 20;
  const auto reading = platform::readMemory();
  EXPECT_EQ(reading.totalBytes, 16.0 * 1073741824);
  ASSERT_TRUE(reading.inUse);
  EXPECT_EQ(reading.inUse->usedBytes, (100.0 + 1000 - 5 + 20) * 16384);
  EXPECT_EQ(reading.inUse->freeBytes, (10.0 + 2) * 16384);
}

TEST_F(Memory, PageSizeIsTheKernels) {
  kernel().pages.wire_count = 3;
  vm_kernel_page_size = 4096;
  EXPECT_EQ(platform::readMemory().inUse->usedBytes, 3.0 * 4096);
}

TEST_F(Memory, PurgeableBeyondInternalCountsAsNothing) {
  kernel().pages.purgeable_count = 50;
  kernel().pages.internal_page_count = 20;
  EXPECT_EQ(platform::readMemory().inUse->usedBytes, 0);
}

TEST_F(Memory, CountsAreUnsigned) {
  kernel().pages.wire_count = 3'000'000'000;
  EXPECT_EQ(platform::readMemory().inUse->usedBytes, 3e9 * 16384);
}

TEST_F(Memory, RefusedCountsLeaveTheTotal) {
  kernel().memoryFailure = KERN_FAILURE;
  const auto reading = platform::readMemory();
  EXPECT_EQ(reading.totalBytes, 16.0 * 1073741824);
  EXPECT_FALSE(reading.inUse);
}

TEST_F(Memory, RoomIsForMoreCountsThanAreKnown) {
  platform::readMemory();
  EXPECT_EQ(kernel().memoryWordsAsked, 62);
}

}  // namespace
