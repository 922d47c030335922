#include "frontends/terminal/menu_view.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "fakes/row_name.h"
#include "frontends/terminal/menu_geometry.h"
#include "frontends/terminal/sample_menu.h"

using terminal::Input;
using terminal::MenuRequest;
using terminal::MenuView;

namespace {

using Kind = Input::Kind;
using Request = MenuRequest::Kind;

constexpr terminal::Size kSize{80, 24};
const terminal::Look kLook{};

Input key(Kind kind) {
  return {.kind = kind};
}

Input letter(char32_t character) {
  return {.kind = Kind::character, .character = character};
}

/// A menu on a screen of 80 x 24, used without a controller.
class UsedMenu {
 public:
  explicit UsedMenu(Menu menu) { rebuild(std::move(menu)); }

  MenuRequest press(const Input& input) {
    return view.handle(input, terminal::menuGeometry(kSize, view, kLook));
  }
  MenuRequest clickOn(const std::string& title) {
    const auto list = terminal::menuGeometry(kSize, view, kLook).list;
    for (std::size_t i = 0; i < view.rows().size(); ++i) {
      if (view.rows()[i].title != title) continue;
      const int y = list.y + static_cast<int>(i - view.cursor().top());
      return press({.kind = Kind::click, .x = 4, .y = y});
    }
    ADD_FAILURE() << "no row " << title;
    return {};
  }
  void rebuild(Menu menu) { view.rebuilt(std::make_shared<const Menu>(std::move(menu)), height()); }
  std::string selected() const { return view.selectedRow() ? view.selectedRow()->title : ""; }
  std::string selectedInSubmenu() const {
    return view.submenuItems()[*view.submenuCursor().selected()].title;
  }

  MenuView view;

 private:
  int height() const { return terminal::listHeight(kSize, view, kLook); }
};

Menu threeProcesses() {
  return SampleMenu::menu({SampleMenu::topRAM({1, 2, 3})});
}

struct MenuKeyRow {
  const char* name;
  std::vector<Input> keys;
  const char* selected;
  Request request;  ///< of the last key
};

class MenuKeys : public testing::TestWithParam<MenuKeyRow> {};

TEST_P(MenuKeys, MoveAndAsk) {
  UsedMenu menu(threeProcesses());
  MenuRequest request;
  for (const Input& input : GetParam().keys) request = menu.press(input);
  EXPECT_EQ(menu.selected(), GetParam().selected);
  EXPECT_EQ(request.kind, GetParam().request);
}

INSTANTIATE_TEST_SUITE_P(
    Table, MenuKeys,
    testing::Values(
        MenuKeyRow{"AtFirstTheFirst", {}, "P1", Request::nothing},
        MenuKeyRow{"Down", {key(Kind::down)}, "P2", Request::nothing},
        MenuKeyRow{"J", {letter(U'j')}, "P2", Request::nothing},
        MenuKeyRow{"K", {letter(U'j'), letter(U'j'), letter(U'k')}, "P2", Request::nothing},
        MenuKeyRow{"End", {key(Kind::end)}, "Quit Vorda", Request::nothing},
        MenuKeyRow{"Home", {key(Kind::end), key(Kind::home)}, "P1", Request::nothing},
        MenuKeyRow{"UpSkipsLabelsAndSeparators",
                   {key(Kind::end), key(Kind::up), key(Kind::up), key(Kind::up)},
                   "P3",
                   Request::nothing},
        MenuKeyRow{"EnterOpensTheSubmenu", {key(Kind::enter)}, "P1", Request::openSubmenu},
        MenuKeyRow{"RightOpensTheSubmenu", {key(Kind::right)}, "P1", Request::openSubmenu},
        MenuKeyRow{
            "EnterPerforms", {key(Kind::end), key(Kind::enter)}, "Quit Vorda", Request::perform},
        MenuKeyRow{"RightNeverPerforms",
                   {key(Kind::end), key(Kind::right)},
                   "Quit Vorda",
                   Request::nothing},
        MenuKeyRow{"EscapeDoesNothing", {key(Kind::escape)}, "P1", Request::nothing},
        MenuKeyRow{"R", {letter(U'r')}, "P1", Request::refresh},
        MenuKeyRow{"Q", {letter(U'q')}, "P1", Request::quit},
        MenuKeyRow{"QuestionMark", {letter(U'?')}, "P1", Request::showKeys},
        MenuKeyRow{"OtherLetters", {letter(U'x')}, "P1", Request::nothing}),
    rowName<MenuKeyRow>);

struct MenuSubmenuRow {
  const char* name;
  std::vector<Input> keys;
  const char* selected;  ///< in the submenu; "" when it is closed
  Request request;
};

class SubmenuKeys : public testing::TestWithParam<MenuSubmenuRow> {};

TEST_P(SubmenuKeys, MoveInTheSubmenuAlone) {
  UsedMenu menu(threeProcesses());
  menu.view.openSubmenu();
  MenuRequest request;
  for (const Input& input : GetParam().keys) request = menu.press(input);
  EXPECT_EQ(menu.selected(), "P1");
  EXPECT_EQ(menu.view.submenuIsOpen() ? menu.selectedInSubmenu() : "", GetParam().selected);
  EXPECT_EQ(request.kind, GetParam().request);
}

INSTANTIATE_TEST_SUITE_P(
    Table, SubmenuKeys,
    testing::Values(
        MenuSubmenuRow{"AtFirstTheDetails", {}, "Full details…", Request::nothing},
        MenuSubmenuRow{"DownStopsAtTheLast", {key(Kind::down)}, "Full details…", Request::nothing},
        MenuSubmenuRow{"Up", {key(Kind::up)}, "Force Quit ( 100 MB)", Request::nothing},
        MenuSubmenuRow{"Home", {key(Kind::home)}, "Quit", Request::nothing},
        MenuSubmenuRow{
            "UpStopsAtTheFirst", {key(Kind::home), key(Kind::up)}, "Quit", Request::nothing},
        MenuSubmenuRow{"End", {key(Kind::home), key(Kind::end)}, "Full details…", Request::nothing},
        MenuSubmenuRow{"Enter", {key(Kind::enter)}, "Full details…", Request::perform},
        MenuSubmenuRow{"RightDoesNothing", {key(Kind::right)}, "Full details…", Request::nothing},
        MenuSubmenuRow{"Left", {key(Kind::left)}, "", Request::closeSubmenu},
        MenuSubmenuRow{"Escape", {key(Kind::escape)}, "", Request::closeSubmenu},
        MenuSubmenuRow{"R", {letter(U'r')}, "Full details…", Request::refresh},
        MenuSubmenuRow{"Q", {letter(U'q')}, "Full details…", Request::quit}),
    rowName<MenuSubmenuRow>);

TEST(MenuRequests, NameTheChosenItem) {
  UsedMenu menu(threeProcesses());
  menu.press(key(Kind::down));
  menu.view.openSubmenu();
  menu.press(key(Kind::home));
  const MenuRequest request = menu.press(key(Kind::enter));
  menu.rebuild(threeProcesses());  // the item stays
  ASSERT_NE(request.item, nullptr);
  EXPECT_EQ(request.item->action, Action::quitProcess);
  EXPECT_EQ(request.item->process->pid, 2);
}

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
  for (int i = 0; i < GetParam().downs; ++i) menu.press(key(Kind::down));
  menu.rebuild(SampleMenu::menu({SampleMenu::topRAM(GetParam().pids)}));
  EXPECT_EQ(menu.selected(), GetParam().selected);
  if (!menu.selected().empty()) return;
  for (const Kind kind : {Kind::enter, Kind::right}) {
    EXPECT_EQ(menu.press(key(kind)).kind, Request::nothing);
    EXPECT_FALSE(menu.view.submenuIsOpen());
  }
  UsedMenu other = menu;
  menu.press(key(Kind::down));
  EXPECT_EQ(menu.selected(), GetParam().below);
  other.press(key(Kind::up));
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
  menu.press(key(Kind::down));
  menu.press(key(Kind::down));
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
  menu.press(key(Kind::down));
  menu.rebuild(launchAgents({"b", "c"}));
  EXPECT_EQ(menu.selected(), "b  ·  on");
}

TEST(SelectionAfterRebuild, DoesNotTakeALaterProcessForTheSameOne) {
  UsedMenu menu(threeProcesses());
  menu.press(key(Kind::down));
  const auto before = *menu.view.selectedKey();
  SampleMenu::Section section = SampleMenu::topRAM({1, 3});
  section.rows.push_back(SampleMenu::process(2, "another P2", 99));
  menu.rebuild(SampleMenu::menu({section}));
  EXPECT_EQ(menu.selected(), "");
  EXPECT_EQ(findItem(menu.view.rows(), before), std::nullopt);
}

TEST(RestingSelection, StaysWhereItIsWhenItsProcessComesBack) {
  UsedMenu menu(threeProcesses());
  menu.press(key(Kind::down));
  menu.rebuild(SampleMenu::menu({SampleMenu::topRAM({1, 3})}));
  menu.rebuild(threeProcesses());
  EXPECT_EQ(menu.selected(), "");
  EXPECT_EQ(menu.press(key(Kind::enter)).kind, Request::nothing);
  menu.rebuild(SampleMenu::menu({SampleMenu::topRAM({8, 9, 1, 2, 3})}));
  menu.press(key(Kind::up));
  EXPECT_EQ(menu.selected(), "P2");
}

TEST(RestingSelection, StandsBelowTheRowAboveItInEverySection) {
  const auto servers = [](const std::vector<std::int32_t>& pids) {
    SampleMenu::Section section = SampleMenu::topRAM(pids);
    section.heading = "Model servers";
    return section;
  };
  UsedMenu menu(SampleMenu::menu({SampleMenu::topRAM({1, 2, 3}), servers({1, 2, 3})}));
  for (int i = 0; i < 4; ++i) menu.press(key(Kind::down));
  ASSERT_EQ(menu.selected(), "P2");
  menu.rebuild(SampleMenu::menu({SampleMenu::topRAM({1, 3}), servers({1, 3})}));
  menu.press(key(Kind::down));
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
  menu.press(key(Kind::down));
  menu.view.openSubmenu();
  menu.press(key(Kind::up));
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
  menu.press(key(GetParam().selectedBy));
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

TEST(MenuClicks, ChooseTheRowUnderThePointer) {
  UsedMenu menu(threeProcesses());
  EXPECT_EQ(menu.clickOn("P2").kind, Request::openSubmenu);
  EXPECT_EQ(menu.selected(), "P2");
  const MenuRequest request = menu.clickOn("Refresh now");
  EXPECT_EQ(request.kind, Request::perform);
  EXPECT_EQ(request.item->action, Action::refreshNow);
}

TEST(MenuClicks, IgnoreWhatCannotBeChosen) {
  UsedMenu menu(threeProcesses());
  EXPECT_EQ(menu.clickOn("Developed by Halvek").kind, Request::nothing);
  EXPECT_EQ(menu.clickOn("Model servers  none").kind, Request::nothing);
  EXPECT_EQ(menu.press({.kind = Kind::click, .x = 5, .y = 1}).kind, Request::nothing);
  EXPECT_EQ(menu.selected(), "P1");
}

TEST(MenuClicks, ChooseInTheSubmenu) {
  UsedMenu menu(threeProcesses());
  menu.view.openSubmenu();
  const auto box = *terminal::menuGeometry(kSize, menu.view, kLook).submenu;
  const auto at = [&](int item) {
    return menu.press({.kind = Kind::click, .x = box.x + 2, .y = box.y + 1 + item});
  };
  EXPECT_EQ(at(0).kind, Request::nothing) << "a label";
  EXPECT_EQ(at(-1).kind, Request::nothing) << "the frame";
  EXPECT_TRUE(menu.view.submenuIsOpen());
  const MenuRequest request = at(4);
  EXPECT_EQ(request.kind, Request::perform);
  EXPECT_EQ(request.item->action, Action::forceProcess);
}

TEST(MenuClicks, BesideTheSubmenuCloseIt) {
  UsedMenu menu(threeProcesses());
  menu.view.openSubmenu();
  EXPECT_EQ(menu.clickOn("P1").kind, Request::closeSubmenu) << "its own row";
  menu.view.openSubmenu();
  EXPECT_EQ(menu.press({.kind = Kind::click, .x = 1, .y = 0}).kind, Request::closeSubmenu);
  EXPECT_FALSE(menu.view.submenuIsOpen());
  menu.view.openSubmenu();
  EXPECT_EQ(menu.clickOn("P3").kind, Request::openSubmenu) << "another row";
  EXPECT_EQ(menu.selected(), "P3");
}

TEST(MenuWheel, ScrollsWithoutSelecting) {
  UsedMenu menu(SampleMenu::menu({SampleMenu::topRAM({1, 2, 3, 4, 5, 6, 7, 8, 9})}));
  menu.press(key(Kind::wheelDown));
  EXPECT_EQ(menu.view.cursor().top(), 3U);
  EXPECT_EQ(menu.selected(), "P1");
}

TEST(EmptyMenu, CanBeUsed) {
  UsedMenu menu(Menu{});
  for (const Kind kind : {Kind::down, Kind::up, Kind::enter, Kind::pageDown, Kind::end}) {
    EXPECT_EQ(menu.press(key(kind)).kind, Request::nothing);
  }
  EXPECT_EQ(menu.selected(), "");
}

/// A family of two rows, P1 and P2, that share a menu of their own and a folded row; and P3.
Menu withFamily() {
  Menu menu = threeProcesses();
  const auto members = std::make_shared<const std::vector<MenuItem>>(
      std::vector{SampleMenu::process(1, "M1"), SampleMenu::process(2, "M2")});
  auto folded = std::make_shared<MenuItem>(SampleMenu::process(1, "Both"));
  for (MenuItem& item : menu.items) {
    if (item.title != "P1" && item.title != "P2") continue;
    item.submenu.push_back({.title = "Its 2 processes…", .action = Action::openRow});
    item.submenu.back().opens = members;
    item.folded = folded;
  }
  return menu;
}

TEST(MenuViewWithFamilies, OpensAMembersMenuWithinTheMenu) {
  UsedMenu menu(withFamily());
  ASSERT_EQ(menu.selected(), "P1");
  menu.view.openSubmenu();
  menu.press(key(Kind::end));
  ASSERT_EQ(menu.selectedInSubmenu(), "Its 2 processes…");
  EXPECT_EQ(menu.press(key(Kind::enter)).kind, Request::nothing);
  EXPECT_EQ(menu.selectedInSubmenu(), "M1");
  menu.press(key(Kind::down));
  EXPECT_EQ(menu.press(key(Kind::right)).kind, Request::nothing);
  EXPECT_EQ(menu.selectedInSubmenu(), "Full details…");
  const MenuRequest request = menu.press(key(Kind::enter));
  EXPECT_EQ(request.kind, Request::perform);
  EXPECT_EQ(request.item->action, Action::showDetails);

  menu.rebuild(withFamily());
  EXPECT_EQ(menu.selectedInSubmenu(), "Full details…") << "it stays where it is";
  EXPECT_EQ(menu.press(key(Kind::escape)).kind, Request::nothing);
  EXPECT_EQ(menu.selectedInSubmenu(), "M2");
  menu.press(key(Kind::left));
  EXPECT_EQ(menu.selectedInSubmenu(), "Its 2 processes…");
  EXPECT_EQ(menu.press(key(Kind::left)).kind, Request::closeSubmenu);
}

TEST(MenuViewWithFamilies, GoesBackFromAMenuThatIsGone) {
  UsedMenu menu(withFamily());
  menu.view.openSubmenu();
  menu.press(key(Kind::end));
  menu.press(key(Kind::enter));
  menu.rebuild(threeProcesses());
  ASSERT_TRUE(menu.view.submenuIsOpen());
  EXPECT_EQ(menu.selectedInSubmenu(), "Full details…");
}

TEST(MenuViewWithFamilies, FoldsAndUnfoldsThem) {
  const auto titles = [](const MenuView& view) {
    std::string all;
    for (const MenuItem& item : view.rows()) {
      if (item.process) all += item.title + " ";
    }
    return all;
  };
  UsedMenu menu(withFamily());
  EXPECT_TRUE(menu.view.canFold());
  menu.press(letter(U'f'));
  EXPECT_EQ(titles(menu.view), "Both P3 ");
  EXPECT_EQ(menu.selected(), "Both") << "the selection is still about the same process";
  menu.rebuild(withFamily());
  EXPECT_EQ(titles(menu.view), "Both P3 ");
  menu.press(letter(U'f'));
  EXPECT_EQ(titles(menu.view), "P1 P2 P3 ");

  menu.rebuild(threeProcesses());
  EXPECT_FALSE(menu.view.canFold());
  menu.press(letter(U'f'));
  EXPECT_FALSE(menu.view.isFolded());
}

}  // namespace
