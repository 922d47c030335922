#include "platform/memory.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include "platform/linux/mem_info.h"
#include "platform/linux/procfs.h"
#include "tools/temp_folder.h"

namespace {

double installedBytes() {
  return static_cast<double>(sysconf(_SC_PHYS_PAGES)) * static_cast<double>(sysconf(_SC_PAGESIZE));
}

TEST(ReadMemory, TellsThisMachinesMemory) {
  const auto reading = platform::readMemory();
  EXPECT_EQ(reading.totalBytes, installedBytes());
  ASSERT_TRUE(reading.inUse);
  EXPECT_GT(reading.inUse->usedBytes, 0);
  EXPECT_LT(reading.inUse->usedBytes, reading.totalBytes);
  EXPECT_GT(reading.inUse->freeBytes, 0);
  EXPECT_LT(reading.inUse->freeBytes, reading.totalBytes);
}

TEST(ReadMemory, StillTellsTheTotalWithoutProc) {
  const auto reading = platform::readMemory(platform::ProcFs("/nonexistent"));
  EXPECT_EQ(reading.totalBytes, installedBytes());
  EXPECT_FALSE(reading.inUse);
}

TEST(ReadMemory, BelievesProcFirst) {
  const TempFolder folder;
  folder.write("meminfo", "MemTotal: 4 kB\nMemAvailable: 1 kB\nMemFree: 2 kB\n");
  const auto reading = platform::readMemory(platform::ProcFs(folder.path().c_str()));
  EXPECT_EQ(reading.totalBytes, 4096);
  ASSERT_TRUE(reading.inUse);
  EXPECT_EQ(reading.inUse->usedBytes, 3072);
  EXPECT_EQ(reading.inUse->freeBytes, 2048);
}

}  // namespace
