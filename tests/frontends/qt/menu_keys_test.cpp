#include "frontends/qt/menu_keys.h"

#include <gtest/gtest.h>

#include <set>

#include "frontends/qt/menu_examples.h"

namespace {

std::string keyOf(const MenuItem& item) {
  return menuKeys({item}).front();
}

TEST(MenuKeys, SameProcessWithOtherFiguresKeepsItsKey) {
  EXPECT_EQ(keyOf(processRow(11, "ollama", 1, "312 MB")),
            keyOf(processRow(11, "ollama", 1, "4.1 GB")));
}

TEST(MenuKeys, AnotherProcessOnTheSamePidGetsAnotherKey) {
  EXPECT_NE(keyOf(processRow(11, "ollama", 1)), keyOf(processRow(11, "ollama", 2)));
}

TEST(MenuKeys, RowKeepsItsKeyOnlyWhileItOffersTheSame) {
  MenuItem protectedRow = processRow(11, "ollama");
  protectedRow.submenu.erase(protectedRow.submenu.begin() + 2);
  EXPECT_NE(keyOf(processRow(11, "ollama")), keyOf(protectedRow));
}

TEST(MenuKeys, TellLaunchAgentsApartByTheirFile) {
  MenuItem ours = actionItem("Stop / unload", Action::unloadLaunchAgent);
  ours.representedObject = VordaLaunchAgent{.label = "sync", .plistPath = "/home/ada/sync"};
  MenuItem theirs = ours;
  theirs.representedObject = VordaLaunchAgent{.label = "sync", .plistPath = "/etc/sync"};
  EXPECT_NE(keyOf(ours), keyOf(theirs));
}

TEST(MenuKeys, TellActionsApart) {
  EXPECT_NE(keyOf(actionItem("a", Action::about)), keyOf(actionItem("a", Action::quitApp)));
}

TEST(MenuKeys, NeverRepeatInOneMenu) {
  const std::vector<MenuItem> items{textItem("a"),   textItem("b"),       separatorItem(),
                                    separatorItem(), processRow(11, "x"), processRow(11, "x")};
  const std::vector<std::string> keys = menuKeys(items);
  EXPECT_EQ(std::set<std::string>(keys.begin(), keys.end()).size(), items.size());
}

}  // namespace
