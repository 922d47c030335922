#include "ui/short_menu.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "ui/controller_test.h"

namespace {

using testing::AllOf;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;
using Titles = std::vector<std::string>;

/// "---" for a separator, "===" for the strip, "> " before what opens a submenu.
Titles shown(const std::vector<MenuItem>& items) {
  Titles result;
  for (const MenuItem& item : items) {
    const bool opens = !item.submenu.empty() && item.action == Action::none;
    result.push_back(item.kind == MenuItem::Kind::separator ? "---"
                     : item.kind == MenuItem::Kind::strip   ? "==="
                                                            : (opens ? "> " : "") + item.title);
  }
  return result;
}

/// 0 for an item of no process.
std::int32_t pidOf(const MenuItem& item) {
  return item.process ? item.process->pid : 0;
}

/// On the scripted machine, from the controller's own menu.
class ShortMenuTest : public ControllerTest {
 protected:
  const Menu& shortMenu() {
    if (!controller_) start();
    made_ = ShortMenu::of(menu());
    return made_;
  }
  /// A copy: the next short menu takes the place of this one. An empty item where there is none.
  MenuItem itemBeginning(const std::string& beginning) {
    const std::vector<MenuItem>& items = shortMenu().items;
    const auto found = std::find_if(items.begin(), items.end(), [&](const MenuItem& item) {
      return item.title.starts_with(beginning);
    });
    if (found != items.end()) return *found;
    ADD_FAILURE() << beginning;
    return {};
  }

  /// `count` model servers with pids from 1.
  static void addServers(int count) {
    for (int pid = 1; pid <= count; ++pid) addProcess(pid, "llama-server", 1000 - pid);
  }

 private:
  Menu made_;
};

TEST_F(ShortMenuTest, OfAnEmptyMachineHasItsLinesAndCommands) {
  EXPECT_THAT(shown(shortMenu().items),
              ElementsAre("===", "Open Vorda…", HasSubstr("System  "), "---",
                          "  (nothing above threshold)", "---", "About Vorda", "Quit Vorda"));
}

TEST_F(ShortMenuTest, OfAnEmptyMenuIsEmpty) {
  EXPECT_TRUE(ShortMenu::of({}).items.empty());
}

TEST_F(ShortMenuTest, HasEverySectionAsASubmenu) {
  addServers(1);
  addProcess(20, "firefox", 900);
  addProcess(30, "mcp-server-git", 90);
  machine().processes.push_back(
      {.pid = 40, .arguments = {"/usr/bin/python3", "train_lora.py"}, .footprintMB = 2048});
  addLaunchAgent("gateway", "", true);
  EXPECT_THAT(
      shown(shortMenu().items),
      ElementsAre("===", "Open Vorda…", HasSubstr("System  "), "---", HasSubstr("2.0 GB"),
                  HasSubstr("999 MB"), HasSubstr("900 MB"), HasSubstr("90 MB"), "---",
                  "> Training / fine-tunes  1  ·  2.0 GB", "> Model servers  1  ·  1.0 GB",
                  "> Agents & tools", "> Auto-start agents", "---", "About Vorda", "Quit Vorda"));
}

TEST_F(ShortMenuTest, HasTheFiveLargestProcesses) {
  addServers(9);
  const std::vector<MenuItem>& items = shortMenu().items;
  std::vector<int> pids;
  for (const MenuItem& item : items) {
    if (item.process) pids.push_back(item.process->pid);
  }
  EXPECT_THAT(pids, ElementsAre(1, 2, 3, 4, 5));
}

TEST_F(ShortMenuTest, ItsRowsKeepTheirDotsAndOpenAMenuOfTheirOwn) {
  addServers(1);
  const std::vector<MenuItem> items = shortMenu().items;
  const auto row =
      std::find_if(items.begin(), items.end(), [](const auto& item) { return item.process; });
  ASSERT_NE(row, items.end());
  EXPECT_EQ(row->action, Action::openRow);
  EXPECT_TRUE(row->enabled);
  EXPECT_TRUE(row->dot);
  const MenuItem section = itemBeginning("Model servers");
  ASSERT_FALSE(section.submenu.empty());
  EXPECT_EQ(section.submenu.front().action, Action::openRow);
  EXPECT_EQ(section.submenu.front().dot, row->dot);
}

TEST_F(ShortMenuTest, AServicesRowOpensAMenuOfItsOwnToo) {
  addLaunchAgent("gateway", "", true);
  const MenuItem section = itemBeginning("Auto-start agents");
  ASSERT_FALSE(section.submenu.empty());
  const MenuItem& row = section.submenu.front();
  EXPECT_EQ(row.action, Action::openRow);
  EXPECT_THAT(shown(ShortMenu::ofRow(row).items),
              ElementsAre(HasSubstr("gateway"), "Stop / unload"));
}

TEST_F(ShortMenuTest, SectionOfEightRowsShowsThemAll) {
  addServers(8);
  const MenuItem section = itemBeginning("Model servers");
  ASSERT_EQ(section.submenu.size(), 8U);
  EXPECT_EQ(pidOf(section.submenu.back()), 8);
}

TEST_F(ShortMenuTest, SectionOfMoreRowsSaysWhereTheyAre) {
  addServers(9);
  const MenuItem section = itemBeginning("Model servers");
  EXPECT_EQ(section.title, "Model servers  9  ·  8.7 GB");
  ASSERT_EQ(section.submenu.size(), 8U);
  EXPECT_EQ(pidOf(section.submenu[6]), 7);
  EXPECT_EQ(section.submenu[7].title, "More in Vorda…");
  EXPECT_EQ(section.submenu[7].action, Action::openMenu);
}

TEST_F(ShortMenuTest, InLittleRoomTheLargestHaveASubmenuToo) {
  addServers(9);
  addProcess(20, "firefox", 60);
  start();
  const Menu made = ShortMenu::of(menu(), ShortMenu::Room::little);
  ASSERT_THAT(shown(made.items),
              ElementsAre("===", "Open Vorda…", HasSubstr("System  "), "---",
                          AllOf(StartsWith("> Largest "), HasSubstr("999 MB")),
                          "> Model servers  9  ·  8.7 GB", "---", "About Vorda", "Quit Vorda"));
  const std::vector<MenuItem>& largest = made.items[4].submenu;
  ASSERT_EQ(largest.size(), 5U);
  EXPECT_EQ(pidOf(largest.back()), 5);
  EXPECT_EQ(largest.back().action, Action::openRow);
  const std::vector<MenuItem>& servers = made.items[5].submenu;
  ASSERT_EQ(servers.size(), 5U);
  EXPECT_EQ(pidOf(servers[3]), 4);
  EXPECT_EQ(servers[4].action, Action::openMenu);
}

TEST_F(ShortMenuTest, InLittleRoomTheLargestAreThereWhenNoLineNamesOne) {
  addProcess(1, "firefox", 60);
  start();
  EXPECT_THAT(shown(ShortMenu::of(menu(), ShortMenu::Room::little).items),
              Contains("> Top RAM (colors match graph)"));
}

TEST_F(ShortMenuTest, TitleOfASectionStillTellsWhichPartOthersChose) {
  addProcess(1, "firefox", 700);
  start();
  const std::vector<MenuItem> items = ShortMenu::of(menu(), ShortMenu::Room::little).items;
  ASSERT_GT(items.size(), 4U);
  const MenuItem& section = items[4];
  EXPECT_EQ(section.title.substr(section.name.begin, section.name.end - section.name.begin),
            "firefox");
}

TEST_F(ShortMenuTest, InLittleRoomAnEmptyMachineHasItsLinesAndCommands) {
  start();
  EXPECT_THAT(
      shown(ShortMenu::of(menu(), ShortMenu::Room::little).items),
      ElementsAre("===", "Open Vorda…", HasSubstr("System  "), "---", "About Vorda", "Quit Vorda"));
}

TEST(ShortMenuRoom, IsWhatTheRowsNeed) {
  EXPECT_EQ(ShortMenu::roomOn(720), ShortMenu::Room::little);
  EXPECT_EQ(ShortMenu::roomOn(974), ShortMenu::Room::little);
  EXPECT_EQ(ShortMenu::roomOn(975), ShortMenu::Room::plenty);
  EXPECT_EQ(ShortMenu::roomOn(1080), ShortMenu::Room::plenty);
}

TEST_F(ShortMenuTest, ProcessThatIsCalledLikeAHeaderIsNone) {
  addProcess(1, "— Agents & tools —", 500);
  EXPECT_THAT(shown(shortMenu().items), Not(Contains("> Agents & tools")));
}

TEST_F(ShortMenuTest, ItsStripIsTheMenusOwn) {
  start();
  ASSERT_FALSE(shortMenu().items.empty());
  EXPECT_EQ(shortMenu().items.front().strip, menu().items.front().strip);
}

TEST_F(ShortMenuTest, MenuOfARowSaysWhoseItIsAndHasItsSubmenu) {
  addServers(1);
  start();
  const MenuItem& full = row(1);
  const Menu own = ShortMenu::ofRow(full);
  ASSERT_EQ(own.items.size(), 1 + full.submenu.size());
  EXPECT_EQ(own.items.front().title, full.title);
  EXPECT_EQ(own.items.front().dot, full.dot);
  EXPECT_EQ(own.items.front().action, Action::none);
  EXPECT_FALSE(own.items.front().enabled);
  EXPECT_TRUE(own.items.front().submenu.empty());
  EXPECT_TRUE(std::equal(full.submenu.begin(), full.submenu.end(), own.items.begin() + 1));
}

TEST_F(ShortMenuTest, MenuOfAProcessIsThatOfItsRowEvenWhereItIsLeftOut) {
  addServers(20);
  start();
  const auto menuOf = [this](std::int32_t pid) {
    return ShortMenu::ofProcess(menu(), {pid, machine().find(pid)->identity});
  };
  const auto ofShown = menuOf(1);
  ASSERT_TRUE(ofShown);
  EXPECT_EQ(ofShown->items, ShortMenu::ofRow(row(1)).items);
  const auto ofLeftOut = menuOf(15);
  ASSERT_TRUE(ofLeftOut);
  ASSERT_FALSE(ofLeftOut->items.empty());
  EXPECT_EQ(pidOf(ofLeftOut->items.front()), 15);
  EXPECT_FALSE(ShortMenu::ofProcess(menu(), {1, 4711})) << "a later process";
  EXPECT_FALSE(ShortMenu::ofProcess(menu(), {21, 1}));
}

}  // namespace
