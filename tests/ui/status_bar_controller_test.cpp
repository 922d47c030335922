#include "ui/status_bar_controller.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "fakes/row_name.h"
#include "ui/controller_test.h"

namespace {

using testing::Contains;
using testing::ElementsAre;

constexpr const char* kIdleToolTip = "Vorda — auto-refresh every 5s\nHalvek";

class Refresh : public ControllerTest {};

TEST_F(Refresh, FillsTheMenuBeforeItIsFirstOpened) {
  addProcess(7, "blender", 700);
  start();
  EXPECT_EQ(frontEnd_.title, "Vorda²");
  EXPECT_EQ(frontEnd_.menusBuilt, 1);
  EXPECT_EQ(machine().pidListings, 1);
  EXPECT_THAT(titles(), Contains("blender  ·   700 MB"));
  EXPECT_FALSE(controller().menuIsOpen());
}

TEST_F(Refresh, TellsWhatTheProgramIsUntilTheFirstSample) {
  struct ToolTips : ScriptedFrontEnd {
    std::vector<std::string> all;
    void setToolTip(const std::string& text) override { all.push_back(text); }
  } frontEnd;
  const StatusBarController controller(frontEnd, {});
  EXPECT_THAT(frontEnd.all,
              ElementsAre("Vorda — color-coded memory pressure\nHalvek", kIdleToolTip));
}

TEST_F(Refresh, ListsOrdinaryProcessesFromFiftyMegabytesOn) {
  addProcess(1, "small", 49.9);
  addProcess(2, "large", 50);
  start();
  EXPECT_THAT(listedPids(), ElementsAre(2));
}

TEST_F(Refresh, KeepsLaunchAgentsOfAIToolingAndThoseThatAreKeptAlive) {
  addLaunchAgent("my-GateWay");
  addLaunchAgent("kept", "", true);
  addLaunchAgent("dropped");
  machine().launchAgentFiles.push_back({"by-program", "", {"/opt/Ollama/bin"}, false});
  start();
  std::vector<std::string> labels;
  for (const auto& launchAgent : controller().launchAgents()) labels.push_back(launchAgent.label);
  EXPECT_THAT(labels, ElementsAre("by-program", "my-GateWay", "kept"));
}

TEST_F(Refresh, AsksOnceWhatStartsByItself) {
  addLaunchAgent("kept", "", true);
  start();
  EXPECT_EQ(machine().launchAgentFileListings, 1);
  frontEnd_.advance(5);
  EXPECT_EQ(machine().launchAgentFileListings, 2);
}

TEST_F(Refresh, NamesTheLargestProcessFrom512MegabytesOn) {
  ScriptedProcess& process = addProcess(7, "blender", 511.9);
  start();
  EXPECT_EQ(frontEnd_.toolTip, kIdleToolTip);
  process.footprintMB = 512;
  frontEnd_.advance(5);
  EXPECT_EQ(frontEnd_.toolTip, "Vorda\nLargest: 512 MB — blender\nHalvek");
}

TEST_F(Refresh, HappensEveryFiveSeconds) {
  start();
  frontEnd_.advance(4.9);
  EXPECT_EQ(machine().pidListings, 1);
  frontEnd_.advance(0.1);
  EXPECT_EQ(machine().pidListings, 2);
  EXPECT_EQ(frontEnd_.menusBuilt, 1) << "nothing has changed";
  frontEnd_.advance(10);
  EXPECT_EQ(machine().pidListings, 4);
}

TEST_F(Refresh, ReturnsWhatTheMenuBeforeHeld) {
  start();
  const int before = machine().timesFreeMemoryReturned;
  frontEnd_.advance(5);
  EXPECT_EQ(machine().timesFreeMemoryReturned, before) << "nothing has changed";
  addProcess(7, "blender", 700);
  frontEnd_.advance(5);
  EXPECT_EQ(machine().timesFreeMemoryReturned, before + 1);
}

TEST_F(Refresh, ReplacesTheWholeSample) {
  addProcess(7, "blender", 700);
  start();
  machine().processes.clear();
  addProcess(8, "gimp", 300);
  frontEnd_.advance(5);
  EXPECT_THAT(listedPids(), ElementsAre(8));
  EXPECT_THAT(titles(), Contains("gimp  ·   300 MB"));
}

TEST_F(Refresh, EndsWithTheController) {
  start();
  controller_.reset();
  frontEnd_.advance(60);
  EXPECT_EQ(machine().pidListings, 1);
}

class OpenMenu : public ControllerTest {};

TEST_F(OpenMenu, IsBuiltAnewBeforeItOpens) {
  start();
  addProcess(7, "blender", 700);
  controller().menuNeedsUpdate();
  EXPECT_EQ(frontEnd_.menusBuilt, 2);
  EXPECT_THAT(listedPids(), ElementsAre(7));
  EXPECT_FALSE(controller().menuIsOpen());
}

TEST_F(OpenMenu, SamplesNothingWhenItOpens) {
  start();
  controller().menuWillOpen();
  EXPECT_TRUE(controller().menuIsOpen());
  EXPECT_EQ(machine().pidListings, 1);
  EXPECT_EQ(frontEnd_.menusBuilt, 1);
}

TEST_F(OpenMenu, IsBuiltAnewWhenItHasClosed) {
  start();
  openMenu();
  closeMenu();
  EXPECT_FALSE(controller().menuIsOpen());
  EXPECT_EQ(machine().pidListings, 3);
  EXPECT_EQ(frontEnd_.menusBuilt, 3);
}

TEST_F(OpenMenu, MovesItsStripOnly) {
  ScriptedProcess& process = addProcess(7, "blender", 1024);
  start();
  openMenu();
  const std::vector<MenuItem> before = menu().items;
  const int built = frontEnd_.menusBuilt;

  process.footprintMB = 4096;
  machine().memory.inUse->usedBytes = 16 * 1073741824.0;
  frontEnd_.advance(5);

  EXPECT_EQ(frontEnd_.menusBuilt, built);
  EXPECT_EQ(frontEnd_.stripChanges, 1);
  EXPECT_EQ(menu().items, before);  // the strip is shared, so it may have moved
  const MemoryPressureView& strip = *menu().items[0].strip;
  ASSERT_EQ(strip.segments.size(), 1U);
  EXPECT_DOUBLE_EQ(strip.segments[0].fraction, 0.25);
  EXPECT_DOUBLE_EQ(strip.pressure, 1);
  EXPECT_EQ(frontEnd_.toolTip, "Vorda\nLargest: 4.00 GB — blender\nHalvek");
}

TEST_F(OpenMenu, KeepsItsStripWhileTheMemoryIsUnknown) {
  addProcess(7, "blender", 1024);
  start();
  openMenu();
  const MemoryPressureView before = *menu().items[0].strip;
  machine().memory = {};
  frontEnd_.advance(5);
  EXPECT_EQ(*menu().items[0].strip, before);
  EXPECT_EQ(frontEnd_.stripChanges, 0);
}

struct StripRow {
  const char* name;
  int processes;
  std::size_t segmentCount;
};

class LiveStrip : public ControllerTest, public testing::WithParamInterface<StripRow> {};

TEST_P(LiveStrip, ShowsTheSixLargest) {
  start();
  openMenu();
  for (int i = 1; i <= GetParam().processes; ++i) addProcess(i, "tool", 100 * i);
  frontEnd_.advance(5);
  const auto& segments = menu().items[0].strip->segments;
  ASSERT_EQ(segments.size(), GetParam().segmentCount);
  for (std::size_t i = 0; i < segments.size(); ++i) {
    EXPECT_EQ(segments[i].pid, GetParam().processes - static_cast<int>(i));
  }
}

INSTANTIATE_TEST_SUITE_P(Table, LiveStrip,
                         testing::Values(StripRow{"Five", 5, 5}, StripRow{"Six", 6, 6},
                                         StripRow{"Seven", 7, 6}),
                         rowName<StripRow>);

TEST_F(OpenMenu, IsBuiltAnewByRefreshNow) {
  start();
  openMenu();
  addProcess(7, "blender", 700);
  choose(row("Refresh now"));
  EXPECT_THAT(titles(), Contains("blender  ·   700 MB"));
  EXPECT_EQ(frontEnd_.menusBuilt, 3);
  EXPECT_TRUE(controller().menuIsOpen());
}

TEST_F(OpenMenu, DoesNothingForAnItemWithoutAnAction) {
  addProcess(7, "blender", 700);
  start();
  choose(row(7));
  choose(row("System"));
  EXPECT_EQ(machine().pidListings, 1);
  EXPECT_EQ(frontEnd_.menusBuilt, 1);
  EXPECT_TRUE(frontEnd_.alerts.empty());
}

}  // namespace
