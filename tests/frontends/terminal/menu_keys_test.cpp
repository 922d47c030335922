#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "fakes/row_name.h"
#include "frontends/terminal/used_menu.h"

using terminal::Input;
using terminal::MenuRequest;

namespace {

using Kind = Input::Kind;
using Request = MenuRequest::Kind;

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
        MenuKeyRow{"Down", {pressed(Kind::down)}, "P2", Request::nothing},
        MenuKeyRow{"J", {typed(U'j')}, "P2", Request::nothing},
        MenuKeyRow{"K", {typed(U'j'), typed(U'j'), typed(U'k')}, "P2", Request::nothing},
        MenuKeyRow{"End", {pressed(Kind::end)}, "Quit Vorda", Request::nothing},
        MenuKeyRow{"Home", {pressed(Kind::end), pressed(Kind::home)}, "P1", Request::nothing},
        MenuKeyRow{"UpSkipsLabelsAndSeparators",
                   {pressed(Kind::end), pressed(Kind::up), pressed(Kind::up), pressed(Kind::up)},
                   "P3",
                   Request::nothing},
        MenuKeyRow{"EnterOpensTheSubmenu", {pressed(Kind::enter)}, "P1", Request::openSubmenu},
        MenuKeyRow{"RightOpensTheSubmenu", {pressed(Kind::right)}, "P1", Request::openSubmenu},
        MenuKeyRow{"EnterPerforms",
                   {pressed(Kind::end), pressed(Kind::enter)},
                   "Quit Vorda",
                   Request::perform},
        MenuKeyRow{"RightNeverPerforms",
                   {pressed(Kind::end), pressed(Kind::right)},
                   "Quit Vorda",
                   Request::nothing},
        MenuKeyRow{"EscapeDoesNothing", {pressed(Kind::escape)}, "P1", Request::nothing},
        MenuKeyRow{"R", {typed(U'r')}, "P1", Request::refresh},
        MenuKeyRow{"Q", {typed(U'q')}, "P1", Request::quit},
        MenuKeyRow{"QuestionMark", {typed(U'?')}, "P1", Request::showKeys},
        MenuKeyRow{"OtherLetters", {typed(U'x')}, "P1", Request::nothing}),
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
        MenuSubmenuRow{
            "DownStopsAtTheLast", {pressed(Kind::down)}, "Full details…", Request::nothing},
        MenuSubmenuRow{"Up", {pressed(Kind::up)}, "Force Quit ( 100 MB)", Request::nothing},
        MenuSubmenuRow{"Home", {pressed(Kind::home)}, "Quit", Request::nothing},
        MenuSubmenuRow{"UpStopsAtTheFirst",
                       {pressed(Kind::home), pressed(Kind::up)},
                       "Quit",
                       Request::nothing},
        MenuSubmenuRow{
            "End", {pressed(Kind::home), pressed(Kind::end)}, "Full details…", Request::nothing},
        MenuSubmenuRow{"Enter", {pressed(Kind::enter)}, "Full details…", Request::perform},
        MenuSubmenuRow{
            "RightDoesNothing", {pressed(Kind::right)}, "Full details…", Request::nothing},
        MenuSubmenuRow{"Left", {pressed(Kind::left)}, "", Request::closeSubmenu},
        MenuSubmenuRow{"Escape", {pressed(Kind::escape)}, "", Request::closeSubmenu},
        MenuSubmenuRow{"R", {typed(U'r')}, "Full details…", Request::refresh},
        MenuSubmenuRow{"Q", {typed(U'q')}, "Full details…", Request::quit}),
    rowName<MenuSubmenuRow>);

struct ShortcutRow {
  const char* name;
  Input pressed;
  Input meant;
};

class Shortcuts : public testing::TestWithParam<ShortcutRow> {};

TEST_P(Shortcuts, StandForAKeyOrALetter) {
  EXPECT_EQ(terminal::withoutShortcut(GetParam().pressed), GetParam().meant);
}

Input functionKey(char32_t number) {
  return {.kind = Kind::function, .character = number};
}

INSTANTIATE_TEST_SUITE_P(
    Table, Shortcuts,
    testing::Values(ShortcutRow{"F1", functionKey(1), typed(U'?')},
                    ShortcutRow{"F2", functionKey(2), {.kind = Kind::other}},
                    ShortcutRow{"F3", functionKey(3), {.kind = Kind::find}},
                    ShortcutRow{"F4", functionKey(4), typed(U'/')},
                    ShortcutRow{"F9", functionKey(9), pressed(Kind::right)},
                    ShortcutRow{"F10", functionKey(10), typed(U'q')},
                    ShortcutRow{"ControlD", typed(0x04), pressed(Kind::pageDown)},
                    ShortcutRow{"ControlU", typed(0x15), pressed(Kind::pageUp)},
                    ShortcutRow{"ALetter", typed(U'd'), typed(U'd')},
                    ShortcutRow{"AKey", pressed(Kind::left), pressed(Kind::left)},
                    ShortcutRow{
                        "KeepsWhenItCame",
                        {.kind = Kind::function, .character = 9, .came = 7, .followed = true},
                        {.kind = Kind::right, .came = 7, .followed = true}}),
    rowName<ShortcutRow>);

TEST(MenuRequests, NameTheChosenItem) {
  UsedMenu menu(threeProcesses());
  menu.press(pressed(Kind::down));
  menu.view.openSubmenu();
  menu.press(pressed(Kind::home));
  const MenuRequest request = menu.press(pressed(Kind::enter));
  menu.rebuild(threeProcesses());  // the item stays
  ASSERT_NE(request.item, nullptr);
  EXPECT_EQ(request.item->action, Action::quitProcess);
  EXPECT_EQ(request.item->process->pid, 2);
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
  const auto box = *menu.geometry().submenu;
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
  menu.press(pressed(Kind::wheelDown));
  EXPECT_EQ(menu.view.cursor().top(), 3U);
  EXPECT_EQ(menu.selected(), "P1");
}

}  // namespace
