#include "frontends/terminal/menu_view.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "fakes/row_name.h"
#include "frontends/terminal/used_menu.h"

using terminal::Input;
using terminal::MenuRequest;

namespace {

using Kind = Input::Kind;
using Request = MenuRequest::Kind;

struct RebuildRow {
  const char* name;
  int downs;  ///< how often Down is pressed before the rebuild
  std::vector<std::int32_t> pids;
  const char* selected;    ///< "" for nothing
  const char* below = "";  ///< what Down selects then, and Up, where nothing was selected
  const char* above = "";
};

class SelectionAfterRebuild : public testing::TestWithParam<RebuildRow> {};

TEST_P(SelectionAfterRebuild, StaysOnItsProcessOrRestsOnNothing) {
  UsedMenu menu(threeProcesses());
  for (int i = 0; i < GetParam().downs; ++i) menu.press(pressed(Kind::down));
  menu.rebuild(SampleMenu::menu({SampleMenu::topRAM(GetParam().pids)}));
  EXPECT_EQ(menu.selected(), GetParam().selected);
  if (!menu.selected().empty()) return;
  for (const Kind kind : {Kind::enter, Kind::right}) {
    EXPECT_EQ(menu.press(pressed(kind)).kind, Request::nothing);
    EXPECT_FALSE(menu.view.submenuIsOpen());
  }
  UsedMenu other = menu;
  menu.press(pressed(Kind::down));
  EXPECT_EQ(menu.selected(), GetParam().below);
  other.press(pressed(Kind::up));
  EXPECT_EQ(other.selected(), GetParam().above);
}

INSTANTIATE_TEST_SUITE_P(
    Table, SelectionAfterRebuild,
    testing::Values(RebuildRow{"Unchanged", 1, {1, 2, 3}, "P2"},
                    RebuildRow{"AnotherOrder", 1, {2, 3, 1}, "P2"},
                    RebuildRow{"NewProcessesAbove", 1, {7, 8, 9, 1, 2, 3}, "P2"},
                    RebuildRow{"GoneAtTheTop", 0, {2, 3}, "", "P2", "P2"},
                    RebuildRow{"GoneInTheMiddle", 1, {1, 3}, "", "P3", "P1"},
                    RebuildRow{"GoneAtTheEndOfItsSection", 2, {1, 2}, "", "Refresh now", "P2"},
                    RebuildRow{"GoneWithTheOneAbove", 1, {3}, "", "P3", "P3"},
                    RebuildRow{"GoneWithTheOneBelow", 1, {1}, "", "Refresh now", "P1"},
                    RebuildRow{"GoneWhileOthersCome", 1, {7, 8, 1, 3}, "", "P3", "P1"},
                    RebuildRow{"AllGone", 1, {}, "", "Refresh now", "Refresh now"},
                    RebuildRow{"CommandsStaySelected", 3, {1, 2, 3, 4, 5, 6}, "Refresh now"},
                    RebuildRow{"TheLastCommandToo", 5, {1}, "Quit Vorda"}),
    rowName<RebuildRow>);

TEST(SelectionAfterRebuild, StaysInItsSection) {
  const SampleMenu::Section servers{.heading = "Model servers",
                                    .rows = {SampleMenu::process(2, "P2")}};
  UsedMenu menu(SampleMenu::menu({SampleMenu::topRAM({1, 2}), servers}));
  menu.press(pressed(Kind::down));
  menu.press(pressed(Kind::down));
  const auto inServers = menu.view.cursor().selected();

  menu.rebuild(SampleMenu::menu({SampleMenu::topRAM({2, 1}), servers}));
  EXPECT_EQ(menu.view.cursor().selected(), inServers);
  menu.rebuild(SampleMenu::menu({SampleMenu::topRAM({1, 2})}));
  EXPECT_EQ(menu.selected(), "P2") << "where the section is gone, the process is still followed";
}

TEST(SelectionAfterRebuild, StaysOnItsLaunchAgent) {
  const auto launchAgents = [](const std::vector<std::string>& names) {
    SampleMenu::Section section{.heading = "Auto-start agents"};
    for (const auto& name : names) section.rows.push_back(SampleMenu::launchAgent(name));
    return SampleMenu::menu({section});
  };
  UsedMenu menu(launchAgents({"a", "b"}));
  menu.press(pressed(Kind::down));
  menu.rebuild(launchAgents({"b", "c"}));
  EXPECT_EQ(menu.selected(), "b  ·  on");
}

TEST(SelectionAfterRebuild, DoesNotTakeALaterProcessForTheSameOne) {
  UsedMenu menu(threeProcesses());
  menu.press(pressed(Kind::down));
  const auto before = *menu.view.selectedKey();
  SampleMenu::Section section = SampleMenu::topRAM({1, 3});
  section.rows.push_back(SampleMenu::process(2, "another P2", 99));
  menu.rebuild(SampleMenu::menu({section}));
  EXPECT_EQ(menu.selected(), "");
  EXPECT_EQ(findItem(menu.view.rows(), before), std::nullopt);
}

TEST(RestingSelection, StaysWhereItIsWhenItsProcessComesBack) {
  UsedMenu menu(threeProcesses());
  menu.press(pressed(Kind::down));
  menu.rebuild(SampleMenu::menu({SampleMenu::topRAM({1, 3})}));
  menu.rebuild(threeProcesses());
  EXPECT_EQ(menu.selected(), "");
  EXPECT_EQ(menu.press(pressed(Kind::enter)).kind, Request::nothing);
  menu.rebuild(SampleMenu::menu({SampleMenu::topRAM({8, 9, 1, 2, 3})}));
  menu.press(pressed(Kind::up));
  EXPECT_EQ(menu.selected(), "P2");
}

TEST(RestingSelection, StandsBelowTheRowAboveItInEverySection) {
  const auto servers = [](const std::vector<std::int32_t>& pids) {
    SampleMenu::Section section = SampleMenu::topRAM(pids);
    section.heading = "Model servers";
    return section;
  };
  UsedMenu menu(SampleMenu::menu({SampleMenu::topRAM({1, 2, 3}), servers({1, 2, 3})}));
  for (int i = 0; i < 4; ++i) menu.press(pressed(Kind::down));
  ASSERT_EQ(menu.selected(), "P2");
  menu.rebuild(SampleMenu::menu({SampleMenu::topRAM({1, 3}), servers({1, 3})}));
  menu.press(pressed(Kind::down));
  EXPECT_EQ(menu.selected(), "P3");
  EXPECT_EQ(menu.view.selectedKey()->section, "— Model servers —");
}

TEST(RestingSelection, IsLeftByAClick) {
  UsedMenu menu(threeProcesses());
  menu.rebuild(SampleMenu::menu({SampleMenu::topRAM({2, 3})}));
  EXPECT_EQ(menu.clickOn("P3").kind, Request::openSubmenu);
  EXPECT_EQ(menu.selected(), "P3");
}

TEST(OpenSubmenu, StaysWithItsProcess) {
  UsedMenu menu(threeProcesses());
  menu.press(pressed(Kind::down));
  menu.view.openSubmenu();
  menu.press(pressed(Kind::up));
  menu.rebuild(SampleMenu::menu({SampleMenu::topRAM({3, 1, 2})}));
  EXPECT_TRUE(menu.view.submenuIsOpen());
  EXPECT_EQ(menu.selected(), "P2");
  EXPECT_EQ(menu.selectedInSubmenu(), "Force Quit ( 100 MB)");
}

struct OtherItemsRow {
  const char* name;
  Kind selectedBy;  ///< the key that selects the item, from the details
  std::function<void(std::vector<MenuItem>&)> change;
  const char* selected;
};

class OpenSubmenuWithOtherItems : public testing::TestWithParam<OtherItemsRow> {};

TEST_P(OpenSubmenuWithOtherItems, KeepsTheSelectionOnWhatItDoes) {
  UsedMenu menu(threeProcesses());
  menu.view.openSubmenu();
  menu.press(pressed(GetParam().selectedBy));
  SampleMenu::Section section = SampleMenu::topRAM({1});
  GetParam().change(section.rows.front().submenu);
  menu.rebuild(SampleMenu::menu({section}));
  ASSERT_TRUE(menu.view.submenuIsOpen());
  EXPECT_EQ(menu.selectedInSubmenu(), GetParam().selected);
}

const auto kGreyLineAbove = [](std::vector<MenuItem>& items) {
  items.insert(items.begin() + 3, SampleMenu::label("grey"));
};

INSTANTIATE_TEST_SUITE_P(
    Table, OpenSubmenuWithOtherItems,
    testing::Values(
        OtherItemsRow{"LineAboveTheDetails", Kind::end, kGreyLineAbove, "Full details…"},
        OtherItemsRow{"LineAboveQuit", Kind::home, kGreyLineAbove, "Quit"},
        OtherItemsRow{"AnotherFigure", Kind::up,
                      [](auto& items) { items[4].title = "Force Quit ( 200 MB)"; },
                      "Force Quit ( 200 MB)"},
        OtherItemsRow{"GoneItem", Kind::home, [](auto& items) { items.erase(items.begin() + 3); },
                      "Full details…"}),
    rowName<OtherItemsRow>);

TEST(OpenSubmenu, ClosesWithItsProcess) {
  UsedMenu menu(threeProcesses());
  menu.view.openSubmenu();
  menu.rebuild(SampleMenu::menu({SampleMenu::topRAM({2, 3})}));
  EXPECT_FALSE(menu.view.submenuIsOpen());
}

TEST(EmptyMenu, CanBeUsed) {
  UsedMenu menu(Menu{});
  for (const Kind kind : {Kind::down, Kind::up, Kind::enter, Kind::pageDown, Kind::end}) {
    EXPECT_EQ(menu.press(pressed(kind)).kind, Request::nothing);
  }
  EXPECT_EQ(menu.selected(), "");
}

/// A family of two rows, P1 and P2, that share a menu of their own; and P3.
Menu withFamily() {
  Menu menu = threeProcesses();
  const auto members = std::make_shared<const std::vector<MenuItem>>(
      std::vector{SampleMenu::process(1, "M1"), SampleMenu::process(2, "M2")});
  for (MenuItem& item : menu.items) {
    if (item.title != "P1" && item.title != "P2") continue;
    item.submenu.push_back({.title = "Its 2 processes…", .action = Action::openRow});
    item.submenu.back().opens = members;
    item.isOfFamily = true;
  }
  return menu;
}

TEST(MenuViewWithFamilies, OpensAMembersMenuWithinTheMenu) {
  UsedMenu menu(withFamily());
  ASSERT_EQ(menu.selected(), "P1");
  menu.view.openSubmenu();
  menu.press(pressed(Kind::end));
  ASSERT_EQ(menu.selectedInSubmenu(), "Its 2 processes…");
  EXPECT_EQ(menu.press(pressed(Kind::enter)).kind, Request::nothing);
  EXPECT_EQ(menu.selectedInSubmenu(), "M1");
  menu.press(pressed(Kind::down));
  EXPECT_EQ(menu.press(pressed(Kind::right)).kind, Request::nothing);
  EXPECT_EQ(menu.selectedInSubmenu(), "Full details…");
  const MenuRequest request = menu.press(pressed(Kind::enter));
  EXPECT_EQ(request.kind, Request::perform);
  EXPECT_EQ(request.item->action, Action::showDetails);

  menu.rebuild(withFamily());
  EXPECT_EQ(menu.selectedInSubmenu(), "Full details…") << "it stays where it is";
  EXPECT_EQ(menu.press(pressed(Kind::escape)).kind, Request::nothing);
  EXPECT_EQ(menu.selectedInSubmenu(), "M2");
  menu.press(pressed(Kind::left));
  EXPECT_EQ(menu.selectedInSubmenu(), "Its 2 processes…");
  EXPECT_EQ(menu.press(pressed(Kind::left)).kind, Request::closeSubmenu);
}

TEST(MenuViewWithFamilies, GoesBackFromAMenuThatIsGone) {
  UsedMenu menu(withFamily());
  menu.view.openSubmenu();
  menu.press(pressed(Kind::end));
  menu.press(pressed(Kind::enter));
  menu.rebuild(threeProcesses());
  ASSERT_TRUE(menu.view.submenuIsOpen());
  EXPECT_EQ(menu.selectedInSubmenu(), "Full details…");
}

TEST(MenuViewWithFamilies, AsksToFoldThemWhileThereAreAny) {
  UsedMenu menu(withFamily());
  EXPECT_TRUE(menu.view.canFold());
  EXPECT_EQ(menu.press(typed(U'f')).kind, Request::fold);
  EXPECT_TRUE(menu.view.isFolded());
  menu.rebuild(threeProcesses());
  EXPECT_FALSE(menu.view.canFold());
  EXPECT_EQ(menu.press(typed(U'f')).kind, Request::fold) << "it unfolds what may come";
  EXPECT_FALSE(menu.view.isFolded());
  EXPECT_EQ(menu.press(typed(U'f')).kind, Request::nothing);
  EXPECT_FALSE(menu.view.isFolded());
}

}  // namespace
