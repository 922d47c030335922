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

struct StallRow {
  const char* name;
  const char* text;
  std::optional<platform::MemoryStalls> expected;
};

class StallsIn : public testing::TestWithParam<StallRow> {};

TEST_P(StallsIn, AreWhatTheLinesSay) {
  EXPECT_EQ(platform::stallsIn(GetParam().text), GetParam().expected);
}

constexpr StallRow kStallRows[] = {
    {"AsTheKernelWritesThem",
     "some avg10=12.34 avg60=5.00 avg300=1.00 total=9135449\n"
     "full avg10=3.21 avg60=2.00 avg300=0.00 total=3281065\n",
     platform::MemoryStalls{12.34, 3.21}},
    {"WithoutFull", "some avg10=7.00 avg60=0.00 avg300=0.00 total=1", platform::MemoryStalls{7, 0}},
    {"WithoutSome", "full avg10=7.00 avg60=0.00 avg300=0.00 total=1\n", std::nullopt},
    {"AllOfTheTime", "some avg10=100.00\n", platform::MemoryStalls{100, 0}},
    {"MoreThanThat", "some avg10=100.01\n", std::nullopt},
    {"LessThanNothing", "some avg10=-1.00\n", std::nullopt},
    {"NoNumber", "some avg10=nan\n", std::nullopt},
    {"NothingThere", "some avg10=\n", std::nullopt},
    {"ALongerWord", "somewhat avg10=7.00\n", std::nullopt},
    {"Nothing", "", std::nullopt},
};

INSTANTIATE_TEST_SUITE_P(Table, StallsIn, testing::ValuesIn(kStallRows), rowName<StallRow>);

TEST(SwappedMemory, IsWhatIsNotFreeOfTheSwap) {
  EXPECT_EQ(platform::memoryIn("SwapTotal: 100 kB\nSwapFree: 60 kB\n").swappedBytes, 40 * kKiB);
  EXPECT_EQ(platform::memoryIn("SwapTotal: 1 kB\nSwapFree: 2 kB\n").swappedBytes, 0);
  EXPECT_EQ(platform::memoryIn("SwapTotal: 0 kB\nSwapFree: 0 kB\n").swappedBytes, 0);
  EXPECT_FALSE(platform::memoryIn("SwapTotal: 100 kB\n").swappedBytes);
}

TEST(ReadMemory, TellsForHowLongProcessesWaited) {
  const TempFolder folder;
  folder.write("pressure/memory", "some avg10=1.50 avg60=0.00 avg300=0.00 total=1\n");
  const auto reading = platform::readMemory(platform::ProcFs(folder.path().c_str()));
  EXPECT_EQ(reading.stalls, (platform::MemoryStalls{1.5, 0}));
}

TEST(SwapIsInUse, WhenSomethingIsSwappedOutOrNobodyKnows) {
  EXPECT_FALSE(platform::isSwapInUse("SwapTotal: 0 kB\nSwapFree: 0 kB\n"));
  EXPECT_FALSE(platform::isSwapInUse("SwapTotal: 100 kB\nSwapFree: 100 kB\n"));
  EXPECT_TRUE(platform::isSwapInUse("SwapTotal: 100 kB\nSwapFree: 96 kB\n"));
  EXPECT_TRUE(platform::isSwapInUse("SwapTotal: 100 kB\n"));
  EXPECT_TRUE(platform::isSwapInUse("SwapFree: 100 kB\n"));
  EXPECT_TRUE(platform::isSwapInUse(""));
}

}  // namespace
