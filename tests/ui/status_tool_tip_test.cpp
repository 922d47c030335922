#include "ui/status_tool_tip.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "fakes/row_name.h"

namespace {

struct ToolTipRow {
  const char* name;
  std::vector<VordaProcess> processes;
  const char* expected;
};

class StatusToolTipOf : public testing::TestWithParam<ToolTipRow> {};

TEST_P(StatusToolTipOf, Says) {
  EXPECT_EQ(StatusToolTip::of(GetParam().processes, 5, {}), GetParam().expected);
}

VordaProcess process(const char* name, double memMB, LabRole role = LabRole::none) {
  return {.displayName = name, .memMB = memMB, .labRole = role};
}

constexpr const char* kIdle = "Vorda — auto-refresh every 5s\nHalvek";

INSTANTIATE_TEST_SUITE_P(
    All, StatusToolTipOf,
    testing::Values(ToolTipRow{"NoProcess", {}, kIdle},
                    ToolTipRow{"JustTooSmall", {process("blender", 511.9)}, kIdle},
                    ToolTipRow{"JustLargeEnough",
                               {process("blender", 512)},
                               "Vorda\nLargest: 512 MB — blender\nHalvek"},
                    ToolTipRow{"FirstOfEquals",
                               {process("blender", 2048), process("gimp", 2048)},
                               "Vorda\nLargest: 2.00 GB — blender\nHalvek"},
                    ToolTipRow{"WhereverItStands",
                               {process("LoRA fine-tune", 600, LabRole::training),
                                process("blender", 2048)},
                               "Vorda\nLargest: 2.00 GB — blender\nHalvek"},
                    ToolTipRow{"NameWithALineBreak",
                               {process("x\nHalvek", 600)},
                               "Vorda\nLargest: 600 MB — x\uFFFDHalvek\nHalvek"}),
    rowName<ToolTipRow>);

TEST(StatusToolTip, TellsOfALimitBesideWhatItAlwaysSays) {
  const SystemMemory::Snapshot sys{.usedGB = 1, .totalGB = 1.5, .isLimit = true};
  EXPECT_EQ(StatusToolTip::of({}, 5, sys),
            "Vorda — auto-refresh every 5s\nLimit of this container: 1.50 GB\nHalvek");
  EXPECT_EQ(StatusToolTip::of({process("blender", 512)}, 5, sys),
            "Vorda\nLargest: 512 MB — blender\nLimit of this container: 1.50 GB\nHalvek");
}

}  // namespace
