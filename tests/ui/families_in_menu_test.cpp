#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "ui/controller_test.h"
#include "ui/family_view.h"
#include "ui/short_menu.h"

namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

/// A training of three: torchrun (10), a rank (11), and a helper (12) that is too small to be
/// listed; and an ordinary process (20).
class FamiliesInMenu : public ControllerTest {
 protected:
  FamiliesInMenu() {
    addMember(10, 1, {"torchrun", "train.py"}, 90);
    addMember(11, 10, {"python3", "train.py"}, 1946);
    addMember(12, 11, {"helper"}, 3);
    addProcess(20, "gimp", 300).identity = 20;
  }

  static ScriptedProcess& addMember(std::int32_t pid, std::int32_t parent,
                                    std::vector<std::string> arguments, double footprintMB) {
    machine().processes.push_back({.pid = pid,
                                   .arguments = std::move(arguments),
                                   .footprintMB = footprintMB,
                                   .identity = static_cast<std::uint64_t>(pid),
                                   .parent = parent});
    return machine().processes.back();
  }
  const std::string& memoryLine(std::int32_t pid) const {
    for (const MenuItem& item : row(pid).submenu) {
      if (item.live) return shownTitle(item);
    }
    static const std::string kNone;
    return kNone;
  }
  static std::vector<std::string> titlesOf(const std::vector<MenuItem>& items) {
    std::vector<std::string> titles;
    titles.reserve(items.size());
    for (const MenuItem& item : items) titles.push_back(item.title);
    return titles;
  }
  static std::vector<std::string> rowsOf(const Menu& menu) {
    std::vector<std::string> titles;
    for (const MenuItem& item : menu.items) {
      if (item.process) titles.push_back(item.title);
    }
    return titles;
  }
};

TEST_F(FamiliesInMenu, EachMembersSubmenuTellsOfAll) {
  start();
  for (const std::int32_t pid : {10, 11}) {
    const auto& entries = row(pid).submenu;
    ASSERT_GE(entries.size(), 5U);
    EXPECT_EQ(entries[entries.size() - 5].kind, MenuItem::Kind::separator);
    const std::vector<MenuItem> added(entries.end() - 4, entries.end());
    EXPECT_THAT(titlesOf(added),
                ElementsAre("Runs as 3 processes  ·  up to 2.0 GB", "Its 3 processes…",
                            "Quit all 3…", "Force Quit all 3…"));
    EXPECT_FALSE(added[0].enabled);
    EXPECT_EQ(added[1].action, Action::openRow);
    EXPECT_EQ(added[2].representedObject, RepresentedObject(std::int32_t{10}));
    EXPECT_THAT(row(pid).toolTip, EndsWith("\nOne of 3 of Training: train.py"));
  }
}

TEST_F(FamiliesInMenu, TheFairFigureAppearsWhileASubmenuIsOpen) {
  for (const std::int32_t pid : {10, 11, 12}) machine().find(pid)->fairMB = 200;
  start();
  openMenu();
  EXPECT_EQ(machine().fairSharesAsked, 0);
  const int built = frontEnd_.menusBuilt;
  machine().fairSharesTakeTime = true;
  controller().submenuWillOpen(row(11));
  frontEnd_.advance(3);
  EXPECT_EQ(memoryLine(11), "Runs as 3 processes  ·  up to 2.0 GB");
  machine().fairSharesTakeTime = false;
  frontEnd_.advance(1);
  EXPECT_EQ(memoryLine(11), "Runs as 3 processes  ·  600 MB");
  EXPECT_EQ(memoryLine(10), "Runs as 3 processes  ·  600 MB") << "the same line";
  EXPECT_EQ(frontEnd_.titleChanges, 1);
  EXPECT_EQ(frontEnd_.menusBuilt, built) << "nothing moved";
  controller().submenuWillOpen(row(10));
  EXPECT_EQ(machine().fairSharesAsked, 1) << "it is known";
  closeMenu();
  EXPECT_EQ(memoryLine(11), "Runs as 3 processes  ·  up to 2.0 GB");
}

TEST_F(FamiliesInMenu, NoFigureIsShownOfWhatIsNotKnownOfEach) {
  machine().find(10)->fairMB = machine().find(11)->fairMB = 200;
  start();
  openMenu();
  controller().submenuWillOpen(row(11));
  frontEnd_.advance(5);
  EXPECT_EQ(memoryLine(11), "Runs as 3 processes  ·  up to 2.0 GB");
}

TEST_F(FamiliesInMenu, TheFairFigureIsThatOfOnesOwn) {
  for (const std::int32_t pid : {10, 11, 12}) machine().find(pid)->fairMB = 200;
  machine().find(11)->effectiveUid = 1001;
  start();
  openMenu();
  controller().submenuWillOpen(row(10));
  frontEnd_.advance(1);
  EXPECT_EQ(memoryLine(10), "Runs as 3 processes  ·  400 MB in your own 2");
}

TEST_F(FamiliesInMenu, NobodyIsAskedOnceTheMenuHasClosed) {
  start();
  openMenu();
  machine().fairSharesTakeTime = true;
  controller().submenuWillOpen(row(11));
  closeMenu();
  machine().fairSharesTakeTime = false;
  frontEnd_.advance(4);
  EXPECT_EQ(frontEnd_.titleChanges, 0);
}

TEST_F(FamiliesInMenu, TheMembersHaveWhatTheirRowsOffer) {
  start();
  const auto& members = entry(row(11), Action::openRow).opens;
  ASSERT_NE(members, nullptr);
  EXPECT_EQ(members, entry(row(10), Action::openRow).opens) << "made once";
  EXPECT_THAT(titlesOf(*members),
              ElementsAre("torchrun  ·    90 MB", "★ Training: train.py  ·   1.9 GB",
                          "helper  ·   3.0 MB"));
  EXPECT_EQ(entry((*members)[2], Action::quitProcess).process, (ProcessReference{12, 12}));
  EXPECT_EQ(ShortMenu::ofRow(entry(row(11), Action::openRow)).items.size(), 4U);
}

TEST_F(FamiliesInMenu, AMemberThatIsListedForItsCardAloneIsOne) {
  machine().gpus = {.devices = {{"c", "H100", platform::GpuCapacity{80ULL << 30, 38ULL << 30}}},
                    .uses = {{12, 0, 1ULL << 30, 1}}};
  start();
  const auto& members = entry(row(11), Action::openRow).opens;
  EXPECT_THAT(titlesOf(*members),
              ElementsAre("torchrun  ·    90 MB", "★ Training: train.py  ·   1.9 GB",
                          "helper  ·   3.0 MB  ·  GPU  1.0 GB"));
  EXPECT_EQ(entry(row(12), Action::openRow).opens, members);
}

TEST_F(FamiliesInMenu, AtMostThirtyMembersAreShown) {
  for (std::int32_t pid = 100; pid < 140; ++pid) addMember(pid, 11, {"helper"}, 3);
  start();
  const auto& members = *entry(row(11), Action::openRow).opens;
  EXPECT_EQ(members.size(), 31U);
  EXPECT_EQ(members.back().title, "and 13 more");
  EXPECT_FALSE(members.back().enabled);
}

TEST_F(FamiliesInMenu, ARowOfItsOwnIsAsItWas) {
  start();
  EXPECT_EQ(row(20).submenu.size(), 6U);
  EXPECT_THAT(row(20).toolTip, EndsWith("above."));
  EXPECT_EQ(row(20).folded, nullptr);
}

TEST_F(FamiliesInMenu, WhoWasLeftBehindSaysSo) {
  start();
  std::erase_if(machine().processes, [](const auto& one) { return one.pid == 10; });
  machine().find(11)->parent = 1;
  controller().menuNeedsUpdate();
  const std::string line = "Left behind: pid 10, which started it, has ended";
  EXPECT_TRUE(row(11).isLeftBehind);
  EXPECT_THAT(row(11).toolTip, HasSubstr("\n" + line));
  EXPECT_EQ(row(11).submenu[2].title, line);
  choose(11, Action::showDetails);
  EXPECT_THAT(frontEnd_.alerts.back().informativeText, HasSubstr("\n" + line + "\n"));
  EXPECT_FALSE(row(20).isLeftBehind);
}

TEST_F(FamiliesInMenu, FoldIntoOneRowInEachSection) {
  start();
  EXPECT_THAT(rowsOf(foldedMenu(menu())),
              ElementsAre("★ Training: train.py  (3)  ·   2.0 GB", "gimp  ·   300 MB",
                          "★ Training: train.py  (3)  ·   2.0 GB"));
  const Menu folded = foldedMenu(menu());
  for (const MenuItem& item : folded.items) {
    if (item.process && item.process->pid == 10) {
      EXPECT_EQ(entry(item, Action::quitFamily).title, "Quit all 3…");
    }
  }
  machine().processes.clear();
  addProcess(20, "gimp", 300);
  controller().menuNeedsUpdate();
  EXPECT_EQ(foldedMenu(menu()).items, menu().items) << "without families nothing changes";
}

}  // namespace
