// From the kernel's files to the row that a user sees: a process of the test's own holds, as a
// folder in the place of /sys says, memory of a card.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <string>

#include "fakes/scripted_front_end.h"
#include "platform/linux/gpu_reader.h"
#include "tools/child_process.h"
#include "tools/temp_folder.h"
#include "ui/status_bar_controller.h"

namespace {

using testing::Contains;
using testing::EndsWith;
using testing::Field;
using testing::HasSubstr;

/// Makes the reader everybody's until the end of its scope.
class Replaced {
 public:
  explicit Replaced(platform::GpuReader& reader) { platform::replaceGpuReader(&reader); }
  ~Replaced() { platform::replaceGpuReader(nullptr); }
  Replaced(const Replaced&) = delete;
  Replaced& operator=(const Replaced&) = delete;
};

class CardsInMenu : public testing::Test {
 protected:
  CardsInMenu() {
    const std::string card = "sys/class/drm/renderD128/";
    folder_.write(card + "dev", "226:128\n");
    folder_.write(card + "device/uevent", "DRIVER=amdgpu\nPCI_SLOT_NAME=0000:04:00.0\n");
    folder_.write(card + "device/mem_info_vram_total", "17179869184\n");
    folder_.write(card + "device/mem_info_vram_used", "4294967296\n");
    folder_.write("sys/class/kfd/kfd/topology/nodes/0/gpu_id", "0\n");
    folder_.write("sys/class/kfd/kfd/topology/nodes/1/gpu_id", "51234\n");
    folder_.write("sys/class/kfd/kfd/topology/nodes/1/properties",
                  "simd_count 256\ndrm_render_minor 128\n");
    folder_.write("proc/none", "");
  }
  void compute(int pid, const std::string& bytes) const {
    folder_.write("sys/class/kfd/kfd/proc/" + std::to_string(pid) + "/vram_51234", bytes + "\n");
  }

  const TempFolder folder_;
  const platform::FileTree sys_{folder_ / "sys"};
  const platform::ProcFs proc_{(folder_ / "proc").c_str()};
};

TEST_F(CardsInMenu, WhatKfdTellsStandsInTheRow) {
  ChildProcess small(playProcess({"--memory", "8"}));
  compute(small.pid(), "3221225472");
  platform::GpuReader reader(sys_, proc_, {.library = [] { return std::string(); }});
  const Replaced replaced(reader);
  ScriptedFrontEnd frontEnd;
  const StatusBarController controller(frontEnd, {});

  const auto& items = controller.rootMenu()->items;
  const auto heading = std::ranges::find(items, "— Top GPU —", &MenuItem::title);
  ASSERT_NE(heading, items.end()) << "it is too small for every other section";
  const MenuItem& row = *(heading + 1);
  ASSERT_TRUE(row.process);
  EXPECT_EQ(row.process->pid, small.pid());
  EXPECT_THAT(row.title, EndsWith("  ·  GPU  3.0 GB"));
  EXPECT_THAT(row.toolTip, HasSubstr("\nGPU memory: 3.00 GB"));
  EXPECT_THAT(items, Contains(Field(&MenuItem::title, "GPU   4.0 / 16 GB used")));
  ASSERT_TRUE(items.front().strip->gpu);
  EXPECT_EQ(items.front().strip->gpu->segments.front().pid, small.pid());
}

}  // namespace
