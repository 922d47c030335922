#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "ui/controller_test.h"
#include "ui/short_menu.h"

namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::IsSupersetOf;
using testing::Not;
using testing::StartsWith;

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
  ASSERT_EQ(members.size(), 31U);
  EXPECT_EQ(members.back().title, "and 13 more");
  EXPECT_FALSE(members.back().enabled);
}

TEST_F(FamiliesInMenu, ARowOfItsOwnIsAsItWas) {
  start();
  EXPECT_EQ(row(20).submenu.size(), 6U);
  EXPECT_THAT(row(20).toolTip, EndsWith("above."));
  EXPECT_FALSE(row(20).isOfFamily);
}

TEST_F(FamiliesInMenu, WhoWasLeftBehindSaysSo) {
  start();
  std::erase_if(machine().processes, [](const auto& one) { return one.pid == 10; });
  machine().find(11)->parent = 1;
  controller().menuNeedsUpdate();
  const std::string line = "Left behind: pid 10, which started it, has ended";
  EXPECT_TRUE(row(11).isLeftBehind);
  EXPECT_THAT(row(11).toolTip, HasSubstr("\n" + line));
  EXPECT_EQ(row(11).submenu.at(2).title, line);
  choose(11, Action::showDetails);
  EXPECT_THAT(lastAlert().informativeText, HasSubstr("\n" + line + "\n"));
  EXPECT_FALSE(row(20).isLeftBehind);
}

TEST_F(FamiliesInMenu, FoldIntoOneRowInEachSection) {
  start();
  const auto unfolded = rowsOf(menu());
  controller().arrange({.foldsFamilies = true});
  EXPECT_THAT(rowsOf(menu()),
              ElementsAre("★ Training: train.py  (3)  ·   2.0 GB", "gimp  ·   300 MB",
                          "★ Training: train.py  (3)  ·   2.0 GB"));
  EXPECT_EQ(entry(row(11), Action::quitFamily).title, "Quit all 3…");
  EXPECT_TRUE(row(11).isOfFamily);
  controller().arrange({});
  EXPECT_EQ(rowsOf(menu()), unfolded);

  machine().processes.clear();
  addProcess(20, "gimp", 300);
  controller().menuNeedsUpdate();
  const auto withoutFamilies = titles();
  controller().arrange({.foldsFamilies = true});
  EXPECT_EQ(titles(), withoutFamilies);
}

TEST_F(FamiliesInMenu, FoldedFillTheirSectionsAndTellHowManyRowsAreLeftOut) {
  for (std::int32_t pid = 100; pid < 130; ++pid) addMember(pid, 11, {"helper"}, 500);
  for (std::int32_t pid = 21; pid <= 30; ++pid) addProcess(pid, "gimp", 300).identity = pid;
  start();
  EXPECT_THAT(titles(), Contains("… and 35 more"));
  controller().arrange({.foldsFamilies = true});
  ASSERT_EQ(rowsOf(menu()).size(), 8U + 1U) << "in both sections";
  EXPECT_EQ(rowsOf(menu())[7], "gimp  ·   300 MB");
  EXPECT_THAT(titles(), Contains("… and 4 more"));
}

TEST_F(FamiliesInMenu, FoldedStandWhereTheirMemoryBelongs) {
  for (std::int32_t pid = 100; pid < 140; ++pid) addMember(pid, 12, {"helper"}, 60);
  addProcess(21, "blender", 4000).identity = 21;
  addProcess(22, "krita", 2000).identity = 22;
  start();
  const std::string family = "★ Training: train.py  (43)  ·   4.3 GB";
  EXPECT_THAT(rowsOf(menu()).at(0), StartsWith("blender"));
  controller().arrange({.foldsFamilies = true});
  EXPECT_THAT(rowsOf(menu()), ElementsAre(family, "blender  ·   3.9 GB", "krita  ·   2.0 GB",
                                          "gimp  ·   300 MB", family));
  controller().arrange({.sortBy = SortBy::name, .foldsFamilies = true});
  EXPECT_THAT(rowsOf(menu()).at(0), StartsWith("blender"));
}

TEST_F(FamiliesInMenu, FoldedAllAreAskedForTheirCards) {
  for (std::int32_t pid = 100; pid < 140; ++pid) addMember(pid, 12, {"helper"}, 60);
  for (std::int32_t pid = 21; pid <= 30; ++pid) addProcess(pid, "gimp", 50 + pid).identity = pid;
  start();
  EXPECT_THAT(machine().pidsOnGpus, Not(Contains(25)));
  controller().arrange({.foldsFamilies = true});
  frontEnd_.advance(5);
  EXPECT_THAT(machine().pidsOnGpus, IsSupersetOf({20, 25, 30, 10, 11, 100, 139}));
  EXPECT_THAT(machine().pidsOnGpus, Not(Contains(24))) << "the ninth row";
}

}  // namespace
