#include "frontends/terminal/menu_painter.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "fakes/row_name.h"
#include "frontends/terminal/color_depth.h"
#include "frontends/terminal/grid_picture.h"
#include "frontends/terminal/menu_geometry.h"
#include "frontends/terminal/menu_view.h"
#include "frontends/terminal/sample_menu.h"

using terminal::CellGrid;
using terminal::Look;
using terminal::MenuView;
using terminal::Size;
using testing::EndsWith;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

namespace {

const Look kMonochrome{.glyphs = terminal::Glyphs::unicode(), .colored = false};
const Look kColored{.glyphs = terminal::Glyphs::unicode(), .colored = true};
const Look kAscii{.glyphs = terminal::Glyphs::ascii(), .colored = false};

CellGrid painted(MenuView& view, const Menu& menu, Size size, const Look& look) {
  view.rebuilt(std::make_shared<const Menu>(menu), terminal::listHeight(size, view, kMonochrome));
  CellGrid grid(size);
  terminal::paintMenu(grid, view, terminal::menuGeometry(size, view, look), "Vorda²", look);
  return grid;
}

Menu sample() {
  SampleMenu::Section top = SampleMenu::topRAM({1, 2});
  top.rows[0].title = "★ Ollama Server  ·   4.0 GB 🔒";
  top.rows[0].toolTip = "Ollama Server\n4.00 GB · Ollama · pid 1\nOwner: ada";
  Menu menu = SampleMenu::menu({top});
  SampleMenu::setStrip(menu, {1, 2}, 0.25, 0.62);
  return menu;
}

TEST(MenuPicture, FillsAnOrdinaryTerminal) {
  MenuView view;
  std::string rule;
  for (int i = 0; i < 80; ++i) rule += "─";
  EXPECT_EQ(pictureOf(painted(view, sample(), {80, 24}, kMonochrome)),
            " Vorda²                                                  Memory pressure medium\n"
            " [AAAAAAAAAAAAAAAAABBBBBBBBBBBBBBBBB······························▒▒▒▒▒▒]   62%\n" +
                rule +
                "\n"
                " System   4.0 / 16 GB used\n"
                " Training / fine-tunes  none\n"
                " Model servers  none\n"
                "\n"
                " — Top RAM —\n"
                " ● ★ Ollama Server  ·   4.0 GB 🔒  [A]\n"
                " ● P2  [B]\n"
                "\n"
                "   Refresh now\n"
                "   About Vorda\n"
                " Developed by Halvek\n"
                "\n"
                "   Quit Vorda\n"
                "\n\n\n\n" +
                rule +
                "\n"
                " Ollama Server · 4.00 GB · Ollama · pid 1 · Owner: ada\n"
                "\n"
                " ↑↓ Move  Enter Open  r Refresh  ? Keys  q Quit\n");
}

TEST(MenuPicture, MarksWhoWasLeftBehindAndTellsOfFolding) {
  MenuView view;
  Menu menu = sample();
  for (MenuItem& item : menu.items) {
    if (item.title != "P2") continue;
    item.isLeftBehind = true;
    item.isOfFamily = true;
  }
  const std::string picture = pictureOf(painted(view, menu, {80, 24}, kMonochrome));
  EXPECT_THAT(picture, HasSubstr(" ● P2  [B]  left behind\n"));
  EXPECT_THAT(picture, HasSubstr("r Refresh  f Fold  ? Keys"));
}

TEST(MenuPicture, HasALineOfTheCardsBelowTheStrip) {
  Menu menu = sample();
  auto strip = std::make_shared<MemoryPressureView>(*menu.items.front().strip);
  // A process that the strip shows, too, and one that it doesn't.
  Segment other{.fraction = 0.25, .color = Color{0, 0, 1}, .label = "blender", .pid = 99};
  Segment shared = strip->segments.front();
  shared.fraction = 0.5;
  strip->gpu = GpuTrack{.segments = {shared, other}, .pressure = 0.75};
  menu.items.front().strip = strip;
  MenuView view;
  const CellGrid plain = painted(view, menu, {40, 24}, kMonochrome);
  EXPECT_EQ(rowOf(plain, 1), " [AAAAAAABBBBBBB··············▒▒]   62%");
  EXPECT_EQ(rowOf(plain, 2), " [AAAAAAAAAAAAAAACCCCCCC······▒▒]   75%");

  MenuView coloredView;
  const CellGrid colored = painted(coloredView, menu, {40, 24}, kColored);
  EXPECT_THAT(rowOf(colored, 2), StartsWith(" A▀▀▀▀▀▀▀▀▀▀▀▀▀▀▀C▀"));
  EXPECT_THAT(rowOf(colored, 2), EndsWith("   75%"));
}

TEST(MenuPicture, ScrollsInTheSmallestTerminal) {
  MenuView view;
  EXPECT_EQ(pictureOf(painted(view, sample(), {40, 10}, kMonochrome)),
            " [AAAAAAABBBBBBB··············▒▒]   62%\n"
            " System   4.0 / 16 GB used             ▐\n"
            " Training / fine-tunes  none           ▐\n"
            " Model servers  none                   ▐\n"
            "\n"
            " — Top RAM —\n"
            " ● ★ Ollama Server  ·   4.0 GB 🔒  [A]\n"
            " ● P2  [B]\n"
            " 4.00 GB · Ollama · pid 1 · Owner: ada\n"
            " Enter Open  r Refresh  ? Keys  q Quit\n");
}

TEST(MenuPicture, IsAsciiWhereTheTerminalIs) {
  MenuView view;
  const CellGrid grid = painted(view, sample(), {80, 24}, kAscii);
  EXPECT_EQ(pictureOf(grid), terminal::inAscii(pictureOf(grid)));
  EXPECT_EQ(rowOf(grid, 8), " o * Ollama Server  -   4.0 GB [locked]  [A]");
  EXPECT_THAT(rowOf(grid, 0), HasSubstr(" Vorda2  "));
}

TEST(MenuPicture, SaysWhatSizeItNeeds) {
  CellGrid grid({39, 9});
  EXPECT_TRUE(terminal::isTooSmall(grid.size()));
  EXPECT_FALSE(terminal::isTooSmall({40, 10}));
  terminal::paintTooSmall(grid, MenuView(), kMonochrome);
  EXPECT_EQ(rowOf(grid, 0), "Vorda needs 40 x 10");

  CellGrid tiny({8, 1});
  terminal::paintTooSmall(tiny, MenuView(), kMonochrome);
  EXPECT_EQ(rowOf(tiny, 0), "Vorda n…");
  CellGrid none({0, 0});
  terminal::paintTooSmall(none, MenuView(), kMonochrome);
}

TEST(MenuPicture, WhereItDoesNotFitStillShowsTheUsedShareAndTheLargest) {
  MenuView view;
  painted(view, sample(), {80, 24}, kMonochrome);
  CellGrid grid({30, 4});
  terminal::paintTooSmall(grid, view, kMonochrome);
  EXPECT_THAT(rowOf(grid, 0), testing::MatchesRegex("[0-9]+% used"));
  EXPECT_EQ(rowOf(grid, 1), "★ Ollama Server  ·   4.0 GB 🔒");
  EXPECT_EQ(rowOf(grid, 2), "Vorda needs 40 x 10");
  CellGrid line({30, 1});
  terminal::paintTooSmall(line, view, kMonochrome);
  EXPECT_THAT(rowOf(line, 0), testing::MatchesRegex("[0-9]+% used  ★ Ollama Ser.*"));
}

TEST(MenuPicture, PaintsTheStripInTheColorsOfItsProcesses) {
  MenuView view;
  Menu menu = sample();
  MemoryPressureView& strip = *menu.items.front().strip;
  strip.segments[0].color = {1, 0, 0};
  strip.segments[1].color = {0, 0, 1};
  const CellGrid grid = painted(view, menu, {80, 24}, kColored);
  EXPECT_EQ(grid.at(1, 1).text(), "A");
  EXPECT_EQ(grid.at(2, 1).style.background, (terminal::Rgb{255, 0, 0}));
  EXPECT_EQ(grid.at(1 + 18, 1).text(), "B");
  EXPECT_EQ(grid.at(1 + 20, 1).style.background, (terminal::Rgb{0, 0, 255}));
  EXPECT_EQ(grid.at(72, 1).style.background, (terminal::Rgb{242, 217, 51})) << "the pressure";
  EXPECT_EQ(grid.at(1, 8).style.foreground, (terminal::Rgb{255, 0, 0})) << "the row's dot";
}

TEST(MenuPicture, HasNoColorWhereThereIsNone) {
  MenuView view;
  const CellGrid grid = painted(view, sample(), {80, 24}, kMonochrome);
  for (int y = 0; y < 24; ++y) {
    for (int x = 0; x < 80; ++x) {
      EXPECT_FALSE(grid.at(x, y).style.foreground || grid.at(x, y).style.background);
    }
  }
}

TEST(MenuPicture, CutsLongTitlesButKeepsTheirLetter) {
  MenuView view;
  SampleMenu::Section top = SampleMenu::topRAM({1});
  top.rows[0].title = std::string(60, 'x');
  Menu menu = SampleMenu::menu({top});
  SampleMenu::setStrip(menu, {1}, 0.5, 0.1);
  EXPECT_EQ(rowOf(painted(view, menu, {40, 16}, kMonochrome), 8),
            " ● " + std::string(29, 'x') + "…  [A]");
}

TEST(MenuPicture, ShowsForeignTextHarmlessly) {
  MenuView view;
  SampleMenu::Section top = SampleMenu::topRAM({1});
  top.rows[0].title = "evil\nPID 1 \x1B[2J";
  top.rows[0].toolTip = "evil\x1B]0;x\x07\nOwner: ada";
  const CellGrid grid = painted(view, SampleMenu::menu({top}), {80, 24}, kMonochrome);
  EXPECT_EQ(rowOf(grid, 8), " ● evil\uFFFDPID 1 \uFFFD[2J");
  EXPECT_EQ(rowOf(grid, 21), " evil\uFFFD]0;x\uFFFD · Owner: ada");
}

TEST(MenuPicture, ReversesTheSelectedRow) {
  MenuView view;
  const CellGrid grid = painted(view, sample(), {80, 24}, kColored);
  EXPECT_TRUE(grid.at(5, 8).style.reverse);
  EXPECT_TRUE(grid.at(70, 8).style.reverse);
  EXPECT_FALSE(grid.at(1, 8).style.reverse) << "the dot keeps its colour";
  EXPECT_FALSE(grid.at(5, 9).style.reverse);
}

struct SubmenuRow {
  const char* name;
  Size size;
  int downs;
};

class SubmenuPicture : public testing::TestWithParam<SubmenuRow> {};

TEST_P(SubmenuPicture, StandsOnTheScreenAndLeavesItsRowInSight) {
  MenuView view;
  const Menu menu = SampleMenu::menu({SampleMenu::topRAM({1, 2, 3, 4, 5, 6, 7, 8})});
  const Size size = GetParam().size;
  view.rebuilt(std::make_shared<const Menu>(menu), terminal::listHeight(size, view, kMonochrome));
  for (int i = 0; i < GetParam().downs; ++i) {
    view.handle({.kind = terminal::Input::Kind::down}, menuGeometry(size, view, kMonochrome));
  }
  view.openSubmenu();
  const auto geometry = menuGeometry(size, view, kMonochrome);
  ASSERT_TRUE(geometry.submenu);
  const terminal::Box box = *geometry.submenu;
  EXPECT_GE(box.x, 0);
  EXPECT_GE(box.y, 0);
  EXPECT_LE(box.right(), size.width);
  EXPECT_LE(box.bottom(), size.height);

  CellGrid grid(size);
  paintMenu(grid, view, geometry, "Vorda²", kMonochrome);
  const auto index = static_cast<int>(*view.cursor().selected() - view.cursor().top());
  EXPECT_THAT(rowOf(grid, geometry.list.y + index),
              HasSubstr("● P" + std::to_string(1 + GetParam().downs)));
  EXPECT_THAT(rowOf(grid, box.y), HasSubstr("┌"));
  const std::string rows = pictureOf(grid);
  EXPECT_THAT(rows, HasSubstr("Force Quit ( 100 MB)"));
  EXPECT_THAT(rows, HasSubstr("Full details…"));
}

INSTANTIATE_TEST_SUITE_P(Table, SubmenuPicture,
                         testing::Values(SubmenuRow{"First", {80, 24}, 0},
                                         SubmenuRow{"Last", {80, 24}, 7},
                                         SubmenuRow{"Wide", {120, 40}, 3},
                                         SubmenuRow{"Smallest", {40, 10}, 0},
                                         SubmenuRow{"SmallestLast", {40, 10}, 7}),
                         rowName<SubmenuRow>);

struct NoticeRow {
  const char* name;
  Size size;
  const char* notice;
  std::vector<std::string> lines;  ///< above the last one of the screen
};

class NoticePicture : public testing::TestWithParam<NoticeRow> {};

TEST_P(NoticePicture, StandsAboveTheKeysAndTakesItsRoomFromTheList) {
  MenuView view;
  const Menu menu = SampleMenu::menu({SampleMenu::topRAM({1, 2, 3, 4, 5, 6, 7, 8})});
  const Size size = GetParam().size;
  const int before = listHeight(size, view, kMonochrome);
  view.setNotice(GetParam().notice);
  const CellGrid grid = painted(view, menu, size, kMonochrome);
  const auto count = static_cast<int>(GetParam().lines.size());
  for (int i = 0; i < count; ++i) {
    EXPECT_EQ(rowOf(grid, size.height - 1 - count + i),
              GetParam().lines[static_cast<std::size_t>(i)]);
  }
  EXPECT_THAT(rowOf(grid, size.height - 1), HasSubstr("q Quit"));
  EXPECT_EQ(listHeight(size, view, kMonochrome), before - count);
  EXPECT_GE(listHeight(size, view, kMonochrome), 4);
}

INSTANTIATE_TEST_SUITE_P(
    Table, NoticePicture,
    testing::Values(NoticeRow{"None", {80, 24}, "", {}},
                    NoticeRow{"OneLine",
                              {80, 24},
                              "big is still running (pid 10). Force Quit may end it.",
                              {" big is still running (pid 10). Force Quit may end it."}},
                    NoticeRow{"TwoProcesses", {80, 24}, "a is.\nb is.", {" a is.", " b is."}},
                    NoticeRow{"Broken",
                              {40, 10},
                              "big is still running (pid 10). Force Quit may end it.",
                              {" big is still running (pid 10). Force", " Quit may end it."}},
                    NoticeRow{"CutOnASmallScreen", {40, 10}, "a\nb\nc", {" a", " b…"}},
                    NoticeRow{"Cut", {80, 24}, "1\n2\n3\n4\n5", {" 1", " 2", " 3", " 4…"}}),
    rowName<NoticeRow>);

TEST(SubmenuPicture, ScrollsWhenItIsTallerThanTheScreen) {
  MenuView view;
  SampleMenu::Section top = SampleMenu::topRAM({1});
  for (int i = 0; i < 30; ++i) {
    top.rows[0].submenu.push_back(
        SampleMenu::command("Unload agent" + std::to_string(i), Action::unloadByLabel));
  }
  const Menu menu = SampleMenu::menu({top});
  const Size size{40, 10};
  view.rebuilt(std::make_shared<const Menu>(menu), terminal::listHeight(size, view, kMonochrome));
  view.openSubmenu();
  view.resized(menuGeometry(size, view, kMonochrome));
  view.handle({.kind = terminal::Input::Kind::end}, menuGeometry(size, view, kMonochrome));

  CellGrid grid(size);
  paintMenu(grid, view, menuGeometry(size, view, kMonochrome), "Vorda²", kMonochrome);
  EXPECT_THAT(pictureOf(grid), HasSubstr("Unload agent29"));
  EXPECT_THAT(pictureOf(grid), Not(HasSubstr("Full details")));
}

TEST(SubmenuPicture, OfALongRowStandsBelowIt) {
  MenuView view;
  SampleMenu::Section top = SampleMenu::topRAM({1});
  top.rows[0].title = std::string(35, 'x');
  top.rows[0].submenu.push_back(
      SampleMenu::command("Quit Docker Desktop from the menu bar whale", Action::openDockerHelp));
  const Menu menu = SampleMenu::menu({top});
  const Size size{40, 30};
  view.rebuilt(std::make_shared<const Menu>(menu), terminal::listHeight(size, view, kMonochrome));
  view.openSubmenu();
  const auto geometry = menuGeometry(size, view, kMonochrome);
  CellGrid grid(size);
  paintMenu(grid, view, geometry, "Vorda²", kMonochrome);
  EXPECT_THAT(rowOf(grid, geometry.submenu->y - 1), HasSubstr("● xxxxxxxx"));
}

}  // namespace
