#include "frontends/qt/exported_menu.h"

#include <gtest/gtest.h>

#include <QByteArray>
#include <set>

#include "frontends/qt/menu_examples.h"
#include "ui/menu_sections.h"

namespace {

using Node = ExportedMenu::Node;

bool isChange(const ExportedMenu::Change& change) {
  return change.layout || !change.relabelled.empty();
}

int idOf(const ExportedMenu& menu, std::int32_t pid) {
  for (const Node& node : menu.root().children) {
    if (node.item->process && node.item->process->pid == pid) return node.id;
  }
  return -1;
}

void collectIds(const Node& node, std::multiset<int>& ids) {
  ids.insert(node.id);
  for (const Node& child : node.children) collectIds(child, ids);
}

TEST(ExportedMenu, NumbersEveryItemOnce) {
  ExportedMenu menu;
  menu.show(menuOf(exampleItems()));
  std::multiset<int> ids;
  collectIds(menu.root(), ids);
  EXPECT_EQ(ids.size(), 1U + 8U + 2U * 4U);
  EXPECT_EQ(std::set<int>(ids.begin(), ids.end()).size(), ids.size());
}

TEST(ExportedMenu, ShowsTheStripAsBlocksAndInWords) {
  ExportedMenu menu;
  menu.show(menuOf(exampleItems()));
  EXPECT_EQ(menu.root().children.front().label, "██████░░░░ 62%");
  EXPECT_EQ(menu.root().children.front().accessibleText, "Memory 62 percent used");
}

TEST(ExportedMenu, SameMenuAgainIsNoChange) {
  ExportedMenu menu;
  menu.show(menuOf(exampleItems()));
  EXPECT_FALSE(isChange(menu.show(menuOf(exampleItems()))));
}

TEST(ExportedMenu, NewFiguresRelabelTheSameItems) {
  ExportedMenu menu;
  menu.show(menuOf({processRow(11, "ollama", 1, "312 MB")}));
  const int id = idOf(menu, 11);
  const ExportedMenu::Change change = menu.show(menuOf({processRow(11, "ollama", 1, "4.1 GB")}));
  EXPECT_FALSE(change.layout);
  EXPECT_EQ(change.relabelled,
            (std::vector<int>{id, menu.root().children.front().children.front().id}));
  EXPECT_EQ(menu.find(id)->label, "ollama  ·  4.1 GB");
}

TEST(ExportedMenu, ProcessThatWentLeavesTheOthersTheirNumbers) {
  ExportedMenu menu;
  menu.show(menuOf({processRow(11, "a"), processRow(12, "b")}));
  const int gone = idOf(menu, 11);
  const int stays = idOf(menu, 12);
  EXPECT_TRUE(menu.show(menuOf({processRow(12, "b")})).layout);
  EXPECT_EQ(idOf(menu, 12), stays);
  EXPECT_EQ(menu.find(gone), nullptr);
}

TEST(ExportedMenu, NumberIsNeverUsedForAnotherProcess) {
  ExportedMenu menu;
  menu.show(menuOf({processRow(11, "a", 1)}));
  const int before = idOf(menu, 11);
  menu.show(menuOf({}));
  menu.show(menuOf({processRow(11, "a", 2)}));
  EXPECT_GT(idOf(menu, 11), before);
  EXPECT_EQ(menu.find(before), nullptr);
}

TEST(ExportedMenu, StripAloneMoves) {
  ExportedMenu menu;
  menu.show(menuOf(exampleItems()));
  MemoryPressureView strip;
  strip.pressure = 0.9;
  const ExportedMenu::Change change = menu.showStrip(strip);
  EXPECT_FALSE(change.layout);
  EXPECT_EQ(change.relabelled, std::vector<int>{menu.root().children.front().id});
  EXPECT_EQ(menu.root().children.front().label, "█████████░ 90%");
  EXPECT_FALSE(isChange(menu.showStrip(strip)));
}

TEST(ExportedMenu, StripOfAMenuWithoutOneIsNoChange) {
  ExportedMenu menu;
  menu.show(menuOf({textItem("x")}));
  EXPECT_FALSE(isChange(menu.showStrip({})));
}

std::vector<std::string> labels(const ExportedMenu& menu) {
  std::vector<std::string> result;
  for (const Node& node : menu.root().children) result.push_back(node.label);
  return result;
}

/// With two processes under the header of the largest.
std::vector<MenuItem> wholeItems() {
  return {stripItem(0.62),
          textItem("System  10.0 / 16 GB used"),
          separatorItem(),
          textItem(MenuConstruction::kTopHeader),
          processRow(11, "ollama"),
          processRow(12, "train_lora_v2.py"),
          separatorItem(),
          actionItem("Refresh now", Action::refreshNow),
          actionItem("Quit Vorda", Action::quitApp)};
}

TEST(ExportedMenu, IsShortForAHostThatCannotScroll) {
  ExportedMenu menu;
  menu.setHost(TrayHostKind::gnomeShell);
  menu.show(menuOf(wholeItems()));
  EXPECT_EQ(labels(menu),
            (std::vector<std::string>{"██████░░░░ 62%", "Open Vorda…", "System  10.0 / 16 GB used",
                                      "", "ollama  ·  312 MB", "train__lora_v2.py  ·  312 MB", "",
                                      "Quit Vorda"}));
}

TEST(ExportedMenu, RowsOfTheShortMenuHaveNoSubmenu) {
  ExportedMenu menu;
  menu.setHost(TrayHostKind::gnomeShell);
  menu.show(menuOf(wholeItems()));
  const Node* row = menu.find(idOf(menu, 12));
  EXPECT_TRUE(row->children.empty());
  EXPECT_EQ(row->item->action, Action::openRow);
  EXPECT_EQ(row->item->submenu.size(), 4U);
}

TEST(ExportedMenu, IsWholeAgainForAnotherHost) {
  ExportedMenu menu;
  menu.show(menuOf(wholeItems()));
  const std::vector<std::string> whole = labels(menu);
  EXPECT_TRUE(menu.setHost(TrayHostKind::gnomeShell).layout);
  EXPECT_NE(labels(menu), whole);
  EXPECT_FALSE(isChange(menu.setHost(TrayHostKind::gnomeShell)));
  EXPECT_TRUE(menu.setHost(TrayHostKind::usual).layout);
  EXPECT_EQ(labels(menu), whole);
}

TEST(ExportedMenu, FollowsTheRoomOnTheScreen) {
  ExportedMenu menu;
  menu.show(menuOf(wholeItems()));
  EXPECT_FALSE(isChange(menu.setRoom(ShortMenu::Room::little)));
  menu.setHost(TrayHostKind::gnomeShell);
  EXPECT_EQ(idOf(menu, 11), -1);
  EXPECT_TRUE(menu.setRoom(ShortMenu::Room::plenty).layout);
  EXPECT_NE(idOf(menu, 11), -1);
}

TEST(ExportedMenu, StripOfTheShortMenuMoves) {
  ExportedMenu menu;
  menu.setHost(TrayHostKind::gnomeShell);
  menu.show(menuOf(wholeItems()));
  MemoryPressureView strip;
  strip.pressure = 0.9;
  EXPECT_EQ(menu.showStrip(strip).relabelled, (std::vector<int>{menu.root().children[0].id}));
}

TEST(ExportedMenu, ALiveTitleRelabelsItsLineAlone) {
  ExportedMenu menu;
  const auto shown = menuOf({rowWithLiveTitle(11, "up to 3_GB"), processRow(12, "ollama")});
  menu.show(shown);
  EXPECT_FALSE(isChange(menu.showTitles()));
  shown->items.front().submenu.front().live->title = "2_GB";
  const Node& line = menu.root().children.front().children.front();
  const ExportedMenu::Change change = menu.showTitles();
  EXPECT_FALSE(change.layout);
  EXPECT_EQ(change.relabelled, std::vector<int>{line.id});
  EXPECT_EQ(line.label, "2__GB");
  EXPECT_FALSE(isChange(menu.show(shown))) << "a menu that is shown later has it, too";
}

TEST(ExportedMenuThatScrolls, StaysStillWhereTheHostIsMadeWithQt) {
  EXPECT_EQ(ExportedMenu::mostUnscrolled(800, "KDE"), 28);
  EXPECT_EQ(ExportedMenu::mostUnscrolled(1080, "ubuntu:LXQt"), 38);
  for (const char* other : {"", "XFCE", "ubuntu:GNOME", "KDEish"}) {
    EXPECT_EQ(ExportedMenu::mostUnscrolled(800, other), std::nullopt) << other;
  }
}

}  // namespace
