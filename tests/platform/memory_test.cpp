#include "platform/linux/memory.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include "fakes/row_name.h"
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

struct MemInfoRow {
  const char* name;
  const char* text;
  double total;
  std::optional<double> used;
  double free = 0;
};

constexpr double kKiB = 1024;

class MemoryIn : public testing::TestWithParam<MemInfoRow> {};

TEST_P(MemoryIn, IsWhatTheLinesSay) {
  const auto& row = GetParam();
  const auto reading = platform::memoryIn(row.text);
  EXPECT_EQ(reading.totalBytes, row.total);
  ASSERT_EQ(reading.inUse.has_value(), row.used.has_value());
  if (!row.used) return;
  EXPECT_EQ(reading.inUse->usedBytes, *row.used);
  EXPECT_EQ(reading.inUse->freeBytes, row.free);
}

constexpr MemInfoRow kMemInfoRows[] = {
    {"AnOrdinaryMachine",
     "MemTotal:       24684468 kB\nMemFree:        20000000 kB\nMemAvailable:   23992984 kB\n"
     "Buffers:           33100 kB\n",
     24684468 * kKiB, (24684468 - 23992984) * kKiB, 20000000 * kKiB},
    {"LinesInAnotherOrder", "MemAvailable: 1 kB\nMemFree: 2 kB\nMemTotal: 3 kB\n", 3 * kKiB,
     2 * kKiB, 2 * kKiB},
    {"NoFinalLineFeed", "MemTotal: 9 kB\nMemFree: 2 kB\nMemAvailable: 4 kB", 9 * kKiB, 5 * kKiB,
     2 * kKiB},
    {"MoreAvailableThanThereIs", "MemTotal: 3 kB\nMemFree: 2 kB\nMemAvailable: 4 kB\n", 3 * kKiB,
     0.0, 2 * kKiB},
    {"NoAvailableLine", "MemTotal: 3 kB\nMemFree: 2 kB\n", 3 * kKiB, std::nullopt},
    {"NoFreeLine", "MemTotal: 3 kB\nMemAvailable: 2 kB\n", 3 * kKiB, std::nullopt},
    {"NoTotalLine", "MemFree: 3 kB\nMemAvailable: 2 kB\n", 0, std::nullopt},
    {"ALongerKeyIsAnotherKey", "MemTotalOfAll: 3 kB\nMemTotal: 5 kB\n", 5 * kKiB, std::nullopt},
    {"AValueThatIsNoNumber", "MemTotal: many kB\nMemFree: 1 kB\nMemAvailable: 1 kB\n", 0,
     std::nullopt},
    {"AValueInOtherUnits", "MemTotal: 3 MB\n", 0, std::nullopt},
    {"AValueWithoutUnits", "MemTotal: 3\n", 0, std::nullopt},
    {"AValueTooLargeToTell", "MemTotal: 18446744073709551615 kB\n", 0, std::nullopt},
    {"AKeyAlone", "MemTotal:\nMemTotal", 0, std::nullopt},
    {"Nothing", "", 0, std::nullopt},
};

INSTANTIATE_TEST_SUITE_P(Table, MemoryIn, testing::ValuesIn(kMemInfoRows), rowName<MemInfoRow>);

TEST(SwapIsInUse, WhenSomethingIsSwappedOutOrNobodyKnows) {
  EXPECT_FALSE(platform::isSwapInUse("SwapTotal: 0 kB\nSwapFree: 0 kB\n"));
  EXPECT_FALSE(platform::isSwapInUse("SwapTotal: 100 kB\nSwapFree: 100 kB\n"));
  EXPECT_TRUE(platform::isSwapInUse("SwapTotal: 100 kB\nSwapFree: 96 kB\n"));
  EXPECT_TRUE(platform::isSwapInUse("SwapTotal: 100 kB\n"));
  EXPECT_TRUE(platform::isSwapInUse("SwapFree: 100 kB\n"));
  EXPECT_TRUE(platform::isSwapInUse(""));
}

}  // namespace
