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

struct MemoryRow {
  const char* name;
  SystemMemory::Snapshot sys;
  const char* expected;
};

class MemoryLines : public testing::TestWithParam<MemoryRow> {};

TEST_P(MemoryLines, Say) {
  EXPECT_EQ(StatusToolTip::memoryLines(GetParam().sys), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(
    All, MemoryLines,
    testing::Values(
        MemoryRow{"NothingBeyondTheUsual", {.usedGB = 8, .totalGB = 16}, ""},
        MemoryRow{"NothingThatIsWorthAWord",
                  {.swappedGB = 0.0009, .stalls = platform::MemoryStalls{0.99, 0.5}},
                  ""},
        MemoryRow{"ALimit", {.totalGB = 1.5, .isLimit = true}, "Limit of this container: 1.50 GB"},
        MemoryRow{"Swap", {.swappedGB = 0.25}, "Swap in use: 256 MB"},
        MemoryRow{"Stalls",
                  {.stalls = platform::MemoryStalls{12.4, 3}},
                  "Waiting for memory: some 12%, all 3% of the last 10 s"},
        MemoryRow{
            "All",
            {.totalGB = 2, .isLimit = true, .swappedGB = 2, .stalls = platform::MemoryStalls{1, 0}},
            "Limit of this container: 2.00 GB\nSwap in use: 2.00 GB\n"
            "Waiting for memory: some 1%, all 0% of the last 10 s"}),
    rowName<MemoryRow>);

TEST(StatusToolTip, HasTheLinesOfTheMemoryBeforeItsLast) {
  const SystemMemory::Snapshot sys{.swappedGB = 1};
  EXPECT_EQ(StatusToolTip::of({}, 5, sys),
            "Vorda — auto-refresh every 5s\nSwap in use: 1.00 GB\nHalvek");
  EXPECT_EQ(StatusToolTip::of({process("blender", 512)}, 5, sys),
            "Vorda\nLargest: 512 MB — blender\nSwap in use: 1.00 GB\nHalvek");
}

}  // namespace
