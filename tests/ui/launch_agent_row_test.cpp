#include <gtest/gtest.h>

#include <optional>
#include <string>

#include "fakes/row_name.h"
#include "ui/menu_construction.h"

namespace {

using Kind = LaunchAgentOperation::Kind;

struct LaunchAgentItemRow {
  const char* name;
  VordaLaunchAgent launchAgent;
  std::string title;
  Action action;
  std::optional<Kind> underWay = std::nullopt;
};

class LaunchAgentItem : public testing::TestWithParam<LaunchAgentItemRow> {};

TEST_P(LaunchAgentItem, SaysItsStateAndOffersToChangeIt) {
  const auto& row = GetParam();
  const MenuItem item = MenuConstruction::launchAgentItem(row.launchAgent, row.underWay);
  EXPECT_EQ(item.title, row.title);
  EXPECT_EQ(item.toolTip, "");
  EXPECT_EQ(item.dot, std::nullopt);
  EXPECT_EQ(item.process, std::nullopt);
  EXPECT_EQ(item.action, Action::none);
  EXPECT_TRUE(item.enabled);

  ASSERT_EQ(item.submenu.size(), 1U);
  const MenuItem& entry = item.submenu[0];
  EXPECT_EQ(entry.title,
            row.action == Action::unloadLaunchAgent ? "Stop / unload" : "Start / load");
  EXPECT_EQ(entry.action, row.action);
  EXPECT_EQ(entry.representedObject, RepresentedObject(row.launchAgent));
  EXPECT_EQ(entry.enabled, row.underWay != Kind::stop);
}

INSTANTIATE_TEST_SUITE_P(
    Table, LaunchAgentItem,
    testing::Values(
        LaunchAgentItemRow{"Off", {.label = "a"}, "a  ·  off", Action::loadLaunchAgent},
        LaunchAgentItemRow{"OffAndKeptAlive",
                           {.label = "a", .keepAlive = true},
                           "a  ·  off ↺",
                           Action::loadLaunchAgent},
        LaunchAgentItemRow{
            "Loaded", {.label = "a", .loaded = true}, "a  ·  on", Action::unloadLaunchAgent},
        LaunchAgentItemRow{"Running",
                           {.label = "a", .keepAlive = true, .loaded = true, .pid = 12345},
                           "a  ·  on · pid 12345 ↺",
                           Action::unloadLaunchAgent},
        LaunchAgentItemRow{"PidWithoutBeingLoaded",
                           {.label = "a", .pid = 5},
                           "a  ·  on · pid 5",
                           Action::loadLaunchAgent},
        LaunchAgentItemRow{"LabelOf40",
                           {.label = std::string(40, 'x')},
                           std::string(40, 'x') + "  ·  off",
                           Action::loadLaunchAgent},
        LaunchAgentItemRow{"LabelOf41",
                           {.label = std::string(41, 'x')},
                           std::string(38, 'x') + "…  ·  off",
                           Action::loadLaunchAgent},
        LaunchAgentItemRow{"Stopping",
                           {.label = "a", .keepAlive = true, .loaded = true, .pid = 5},
                           "a  ·  stopping… ↺",
                           Action::unloadLaunchAgent,
                           Kind::stop},
        LaunchAgentItemRow{"StoppingWhatHasGone",
                           {.label = "a"},
                           "a  ·  stopping…",
                           Action::loadLaunchAgent,
                           Kind::stop},
        LaunchAgentItemRow{
            "Starting", {.label = "a"}, "a  ·  starting…", Action::unloadLaunchAgent, Kind::start},
        LaunchAgentItemRow{"StartingWhatIsLoadedByNow",
                           {.label = "a", .loaded = true, .pid = 5},
                           "a  ·  starting…",
                           Action::unloadLaunchAgent,
                           Kind::start}),
    rowName<LaunchAgentItemRow>);

}  // namespace
