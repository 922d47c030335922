#include "platform/linux/drm_cards.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tools/temp_folder.h"

namespace {

using platform::CardUses;
using platform::DrmCard;
using platform::drmCards;
using platform::FileTree;
using platform::GpuCapacity;
using platform::kfdUses;
using testing::IsEmpty;
using testing::SizeIs;

class Cards : public testing::Test {
 protected:
  /// A card as AMD's driver lists it, with its two device files.
  void addAmd(int number, const std::string& place) const {
    for (const std::string& node :
         {"card" + std::to_string(number), "renderD" + std::to_string(128 + number)}) {
      const std::string folder = "class/drm/" + node;
      folder_.write(folder + "/dev",
                    "226:" + std::to_string(node[0] == 'c' ? number : 128 + number) + "\n");
      folder_.write(folder + "/device/uevent", "DRIVER=amdgpu\nPCI_CLASS=30000\nPCI_SLOT_NAME=" +
                                                   place + "\nMODALIAS=pci:v00001002\n");
      folder_.write(folder + "/device/mem_info_vram_total", "17163091968\n");
      folder_.write(folder + "/device/mem_info_vram_used", "1289748480\n");
      folder_.write(folder + "/device/product_name", "Radeon\n");
      folder_.write(folder + "/device/power/runtime_status", "active\n");
    }
  }
  void letSleep(int number) const {
    for (const std::string& node :
         {"card" + std::to_string(number), "renderD" + std::to_string(128 + number)}) {
      folder_.write("class/drm/" + node + "/device/power/runtime_status", "suspended\n");
    }
  }
  void addKfdNode(int node, int number, int renderMinor) const {
    const std::string folder = "class/kfd/kfd/topology/nodes/" + std::to_string(node);
    folder_.write(folder + "/gpu_id", std::to_string(number) + "\n");
    folder_.write(folder + "/properties", "cpu_cores_count 0\nsimd_count 120\ndrm_render_minor " +
                                              std::to_string(renderMinor) + "\nhive_id 0\n");
  }
  void addKfdUse(int pid, int number, const std::string& bytes) const {
    folder_.write("class/kfd/kfd/proc/" + std::to_string(pid) + "/vram_" + std::to_string(number),
                  bytes);
  }

  const TempFolder folder_;
  const FileTree sys_{folder_.path().string()};
};

TEST_F(Cards, AreListedOnceWithAllTheirFiles) {
  addAmd(0, "0000:08:00.0");
  addAmd(1, "0000:04:00.0");
  folder_.write("class/drm/card0-DP-1/status", "connected\n");
  folder_.write("class/drm/version", "drm 1.1.0 20060810\n");
  const auto cards = drmCards(sys_);
  ASSERT_THAT(cards, SizeIs(2));
  EXPECT_EQ(cards[0].id, "0000:04:00.0");
  EXPECT_EQ(cards[0].driver, "amdgpu");
  EXPECT_EQ(cards[0].name, "Radeon");
  EXPECT_EQ(cards[0].capacity, (GpuCapacity{17163091968, 1289748480}));
  EXPECT_TRUE(cards[0].computes);
  EXPECT_FALSE(cards[0].sleeps);
  ASSERT_THAT(cards[0].nodes, SizeIs(2));
  EXPECT_EQ(cards[0].nodes[1].majorNumber, 226U);
  EXPECT_EQ(cards[0].nodes[1].minorNumber, 129U);
  EXPECT_EQ(cards[1].id, "0000:08:00.0");
}

TEST_F(Cards, ThatSleepAreNotAsked) {
  addAmd(0, "0000:08:00.0");
  letSleep(0);
  const auto cards = drmCards(sys_);
  ASSERT_THAT(cards, SizeIs(1));
  EXPECT_TRUE(cards[0].sleeps);
  EXPECT_FALSE(cards[0].capacity);
}

TEST_F(Cards, OfADisplayAloneComputeNothing) {
  folder_.write("class/drm/card0/dev", "226:0\n");
  folder_.write("class/drm/card0/device/uevent", "DRIVER=ast\nPCI_SLOT_NAME=0000:03:00.0\n");
  EXPECT_FALSE(drmCards(sys_).at(0).computes);
}

TEST_F(Cards, MayBeOnNoBus) {
  folder_.write("class/drm/renderD128/dev", "226:128\n");
  folder_.write("class/drm/renderD128/device/uevent",
                "DRIVER=panthor\nOF_FULLNAME=/gpu@fb000000\n");
  EXPECT_EQ(drmCards(sys_).at(0).id, "/gpu@fb000000");
}

TEST_F(Cards, MayBeAccelerators) {
  folder_.write("class/accel/accel0/dev", "261:0\n");
  folder_.write("class/accel/accel0/device/uevent", "DRIVER=amdxdna\nPCI_SLOT_NAME=0000:c5:00.1\n");
  const auto cards = drmCards(sys_);
  ASSERT_THAT(cards, SizeIs(1));
  EXPECT_EQ(cards[0].nodes.at(0).majorNumber, platform::kAccelMajor);
}

TEST_F(Cards, WithoutFiguresHaveNoCapacity) {
  addAmd(0, "0000:08:00.0");
  for (const char* const wrong : {"", "0\n", "much\n", "-5\n"}) {
    for (const char* const node : {"card0", "renderD128"}) {
      folder_.write(std::string("class/drm/") + node + "/device/mem_info_vram_total", wrong);
    }
    EXPECT_FALSE(drmCards(sys_).at(0).capacity) << wrong;
  }
}

TEST_F(Cards, AreNoneWhereThereAreNone) {
  EXPECT_THAT(drmCards(sys_), IsEmpty());
  EXPECT_THAT(kfdUses(sys_, {}), IsEmpty());
}

TEST_F(Cards, ComputeForProcessesThatKfdTells) {
  addAmd(0, "0000:08:00.0");
  addAmd(1, "0000:04:00.0");
  folder_.write("class/kfd/kfd/topology/nodes/0/gpu_id", "0\n");
  addKfdNode(1, 51234, 128);
  addKfdNode(2, 61234, 129);
  addKfdUse(4711, 51234, "1073741824\n");
  addKfdUse(4711, 61234, "4096\n");
  addKfdUse(4712, 61234, "0\n");
  addKfdUse(4713, 99999, "4096\n");  // of no card that is listed
  folder_.write("class/kfd/kfd/proc/x/vram_51234", "4096\n");
  folder_.write("class/kfd/kfd/proc/4294967296/vram_51234", "4096\n");
  // By id: the second card is the first of the list.
  EXPECT_EQ(kfdUses(sys_, drmCards(sys_)), (CardUses{{{4711, 0}, 4096}, {{4711, 1}, 1073741824}}));
}

TEST_F(Cards, ThatAreDividedAddUpWhatKfdTellsOfTheirParts) {
  addAmd(0, "0000:08:00.0");
  addKfdNode(1, 51234, 128);
  addKfdNode(2, 51235, 128);
  addKfdUse(4711, 51234, "4096\n");
  addKfdUse(4711, 51235, "8192\n");
  EXPECT_EQ(kfdUses(sys_, drmCards(sys_)), (CardUses{{{4711, 0}, 12288}}));
}

TEST_F(Cards, ThatSleepAreNotAskedOfKfd) {
  addAmd(0, "0000:08:00.0");
  addKfdNode(1, 51234, 128);
  addKfdUse(4711, 51234, "4096\n");
  letSleep(0);
  EXPECT_THAT(kfdUses(sys_, drmCards(sys_)), IsEmpty());
}

}  // namespace
