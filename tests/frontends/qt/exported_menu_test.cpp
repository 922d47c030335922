#include "frontends/qt/exported_menu.h"

#include <gtest/gtest.h>

#include <set>

#include "frontends/qt/menu_examples.h"

namespace {

using Node = ExportedMenu::Node;

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

TEST(ExportedMenu, numbersEveryItemOnce) {
  ExportedMenu menu;
  menu.show(snapshot(exampleItems()));
  std::multiset<int> ids;
  collectIds(menu.root(), ids);
  EXPECT_EQ(ids.size(), 1U + 8U + 2U * 4U);
  EXPECT_EQ(std::set<int>(ids.begin(), ids.end()).size(), ids.size());
}

TEST(ExportedMenu, showsTheStripAsABarAndInWords) {
  ExportedMenu menu;
  menu.show(snapshot(exampleItems()));
  EXPECT_EQ(menu.root().children.front().label, "██████░░░░ 62%");
  EXPECT_EQ(menu.root().children.front().accessibleText, "Memory 62 percent used");
}

TEST(ExportedMenu, sameMenuAgainIsNoChange) {
  ExportedMenu menu;
  menu.show(snapshot(exampleItems()));
  EXPECT_FALSE(menu.show(snapshot(exampleItems())).any());
}

TEST(ExportedMenu, newFiguresRelabelTheSameItems) {
  ExportedMenu menu;
  menu.show(snapshot({processRow(11, "ollama", 1, "312 MB")}));
  const int id = idOf(menu, 11);
  const ExportedMenu::Change change = menu.show(snapshot({processRow(11, "ollama", 1, "4.1 GB")}));
  EXPECT_FALSE(change.layout);
  EXPECT_EQ(change.relabelled,
            (std::vector<int>{id, menu.root().children.front().children.front().id}));
  EXPECT_EQ(menu.find(id)->label, "ollama  ·  4.1 GB");
}

TEST(ExportedMenu, processThatWentLeavesTheOthersTheirNumbers) {
  ExportedMenu menu;
  menu.show(snapshot({processRow(11, "a"), processRow(12, "b")}));
  const int gone = idOf(menu, 11);
  const int stays = idOf(menu, 12);
  EXPECT_TRUE(menu.show(snapshot({processRow(12, "b")})).layout);
  EXPECT_EQ(idOf(menu, 12), stays);
  EXPECT_EQ(menu.find(gone), nullptr);
}

TEST(ExportedMenu, numberIsNeverUsedForAnotherProcess) {
  ExportedMenu menu;
  menu.show(snapshot({processRow(11, "a", 1)}));
  const int before = idOf(menu, 11);
  menu.show(snapshot({}));
  menu.show(snapshot({processRow(11, "a", 2)}));
  EXPECT_GT(idOf(menu, 11), before);
  EXPECT_EQ(menu.find(before), nullptr);
}

TEST(ExportedMenu, stripAloneMoves) {
  ExportedMenu menu;
  menu.show(snapshot(exampleItems()));
  MemoryPressureView strip;
  strip.pressure = 0.9;
  const ExportedMenu::Change change = menu.showStrip(strip);
  EXPECT_FALSE(change.layout);
  EXPECT_EQ(change.relabelled, std::vector<int>{menu.root().children.front().id});
  EXPECT_EQ(menu.root().children.front().label, "█████████░ 90%");
  EXPECT_FALSE(menu.showStrip(strip).any());
}

TEST(ExportedMenu, stripOfAMenuWithoutOneIsNoChange) {
  ExportedMenu menu;
  menu.show(snapshot({textItem("x")}));
  EXPECT_FALSE(menu.showStrip({}).any());
}

}  // namespace
