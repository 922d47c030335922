#include "platform/linux/nvidia_driver.h"

#include <gtest/gtest.h>

#include "fakes/row_name.h"
#include "tools/scoped_variable.h"
#include "tools/temp_folder.h"

namespace {

using platform::FileTree;
using platform::findNvidiaLibrary;
using platform::nvidiaCards;

TEST(NvidiaLibraryFile, IsFoundInAFolder) {
  const TempFolder folder;
  folder.write("lib/libnvidia-ml.so.1", "");
  EXPECT_EQ(findNvidiaLibrary("/nonexistent", {folder / "other", folder / "lib"}),
            (folder / "lib/libnvidia-ml.so.1").string());
}

TEST(NvidiaLibraryFile, IsFoundByTheLoadersList) {
  const TempFolder folder;
  folder.write("cache", std::string("glibc-ld.so.cache1.1\0libm.so.6\0libnvidia-ml.so.1\0", 49));
  EXPECT_EQ(findNvidiaLibrary(folder / "cache", {folder.path()}), "libnvidia-ml.so.1");
}

TEST(NvidiaLibraryFile, IsNotFoundWhereItIsNot) {
  const TempFolder folder;
  folder.write("cache", "glibc-ld.so.cache1.1 libm.so.6");
  std::filesystem::create_directory(folder / "libnvidia-ml.so.1");
  EXPECT_EQ(findNvidiaLibrary(folder / "cache", {folder.path(), "relative"}), "");
  EXPECT_EQ(findNvidiaLibrary(folder / "no cache", {}), "");
}

TEST(NvidiaLibraryFile, IsFoundWhereTheLoaderIsToldToLookFirst) {
  const TempFolder folder;
  folder.write("libnvidia-ml.so.1", "");
  const ScopedVariable path("LD_LIBRARY_PATH", ("/nonexistent:" + folder.path().string()).c_str());
  EXPECT_EQ(findNvidiaLibrary(), (folder / "libnvidia-ml.so.1").string());
}

struct CardRow {
  const char* name;
  const char* vendor;
  const char* kind;
  const char* status;
  const char* control;
  bool sleeps;
  bool maySleep;
};

class NvidiaCardsOnTheBus : public testing::TestWithParam<CardRow> {};

TEST_P(NvidiaCardsOnTheBus, AreKnownToSleep) {
  const CardRow& row = GetParam();
  const TempFolder folder;
  const std::string other = "bus/pci/devices/0000:00:02.0/";
  folder.write(other + "vendor", "0x8086\n");
  folder.write(other + "class", "0x030000\n");
  folder.write(other + "power/runtime_status", "suspended\n");
  folder.write(other + "power/control", "auto\n");
  const std::string card = "bus/pci/devices/0000:01:00.0/";
  folder.write(card + "vendor", row.vendor);
  folder.write(card + "class", row.kind);
  folder.write(card + "power/runtime_status", row.status);
  folder.write(card + "power/control", row.control);
  const auto cards = nvidiaCards(FileTree(folder.path().string()));
  EXPECT_EQ(cards.oneSleeps, row.sleeps);
  EXPECT_EQ(cards.oneMaySleep, row.maySleep);
}

INSTANTIATE_TEST_SUITE_P(
    Table, NvidiaCardsOnTheBus,
    testing::Values(
        CardRow{"Asleep", "0x10de\n", "0x030000\n", "suspended\n", "auto\n", true, true},
        CardRow{"FallingAsleep", "0x10de\n", "0x030000\n", "suspending\n", "auto\n", true, true},
        CardRow{"ComputeCard", "0x10de\n", "0x030200\n", "suspended\n", "auto\n", true, true},
        CardRow{"Awake", "0x10de\n", "0x030000\n", "active\n", "auto\n", false, true},
        CardRow{"AlwaysAwake", "0x10de\n", "0x030200\n", "active\n", "on\n", false, false},
        CardRow{"WithoutPowerManagement", "0x10de\n", "0x030200\n", "unsupported\n", "", false,
                false},
        CardRow{"SoundOfACard", "0x10de\n", "0x040300\n", "suspended\n", "auto\n", false, false},
        CardRow{"AnothersCard", "0x1002\n", "0x030000\n", "suspended\n", "auto\n", false, false}),
    rowName<CardRow>);

TEST(NvidiaCardsOnTheBus, AreNoneWithoutABus) {
  const TempFolder folder;
  EXPECT_FALSE(nvidiaCards(FileTree(folder.path().string())).oneSleeps);
}

}  // namespace
