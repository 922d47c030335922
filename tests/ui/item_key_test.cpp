#include "ui/item_key.h"

#include <gtest/gtest.h>

#include <functional>
#include <set>

#include "fakes/row_name.h"
#include "ui/menu_sections.h"

namespace {

using Items = std::vector<MenuItem>;

const MenuItem kSeparator{.kind = MenuItem::Kind::separator};

VordaProcess ollama() {
  VordaProcess process;
  process.pid = 11;
  process.identity = 1;
  process.displayName = "ollama";
  process.memMB = 312;
  return process;
}

VordaLaunchAgent syncLaunchAgent() {
  return {.label = "sync", .plistPath = "/home/ada/sync", .loaded = true};
}

MenuItem heading(const char* title) {
  return {.title = title, .enabled = false};
}

ItemKey keyOf(const MenuItem& item) {
  return itemKeys({{item}}).front();
}

struct ProcessKeyRow {
  const char* name;
  std::function<void(VordaProcess&)> change;
  bool isSame;
};

class KeyOfAProcess : public testing::TestWithParam<ProcessKeyRow> {};

TEST_P(KeyOfAProcess, IsThatOfTheSameProcessAlone) {
  VordaProcess other = ollama();
  GetParam().change(other);
  EXPECT_EQ(
      keyOf(MenuConstruction::processItem(ollama())) == keyOf(MenuConstruction::processItem(other)),
      GetParam().isSame);
}

INSTANTIATE_TEST_SUITE_P(
    , KeyOfAProcess,
    testing::Values(
        ProcessKeyRow{"Unchanged", [](auto&) {}, true},
        ProcessKeyRow{"OtherFigures", [](auto& process) { process.memMB = 4100; }, true},
        ProcessKeyRow{"OtherName", [](auto& process) { process.displayName = "llama"; }, true},
        ProcessKeyRow{"OffersSomethingElse", [](auto& process) { process.isProtected = true; },
                      true},
        ProcessKeyRow{"OtherPid", [](auto& process) { process.pid = 12; }, false},
        ProcessKeyRow{"LaterProcessOnItsPid", [](auto& process) { process.identity = 2; }, false},
        ProcessKeyRow{"NobodyKnowsWhich", [](auto& process) { process.identity.reset(); }, false}),
    rowName<ProcessKeyRow>);

TEST(KeyOfALaunchAgent, StaysWhenItIsStoppedAndTellsFilesApart) {
  VordaLaunchAgent stopped = syncLaunchAgent();
  stopped.loaded = false;
  EXPECT_EQ(keyOf(MenuConstruction::launchAgentItem(syncLaunchAgent())),
            keyOf(MenuConstruction::launchAgentItem(stopped)));
  VordaLaunchAgent other = syncLaunchAgent();
  other.plistPath = "/etc/sync";
  EXPECT_NE(keyOf(MenuConstruction::launchAgentItem(syncLaunchAgent())),
            keyOf(MenuConstruction::launchAgentItem(other)));
}

TEST(KeyOfACommand, IsItsAction) {
  EXPECT_NE(keyOf({.title = "a", .action = Action::about}),
            keyOf({.title = "a", .action = Action::quitApp}));
}

TEST(KeyInASubmenu, TellsWhatEachItemDoes) {
  VordaProcess process = ollama();
  process.matchedAgents = {"one", "two"};
  const Items submenu = MenuConstruction::processItem(process).submenu;
  const std::vector<ItemKey> keys = itemKeys(submenu);
  std::set<std::string> subjects;
  std::size_t commands = 0;
  for (std::size_t i = 0; i < submenu.size(); ++i) {
    if (submenu[i].action == Action::none) continue;
    subjects.insert(keys[i].subject);
    ++commands;
  }
  ASSERT_EQ(commands, 5U);  // quit, force quit, details, and a launch agent each
  EXPECT_EQ(subjects.size(), commands);
}

TEST(KeyOfARowWithoutASubject, IsWhatItsSubmenuSpeaksOf) {
  const MenuItem row = MenuConstruction::processItem(ollama());
  const MenuItem section{.title = "Training  1", .submenu = {row}};
  const MenuItem relabelled{.title = "Training  2", .submenu = {row, heading("More")}};
  const MenuItem another{.title = "Training  1",
                         .submenu = {MenuConstruction::launchAgentItem(syncLaunchAgent())}};
  EXPECT_EQ(keyOf(section), keyOf(relabelled));
  EXPECT_NE(keyOf(section), keyOf(another));
}

TEST(ItemKeys, NeverRepeatInOneMenu) {
  const MenuItem row = MenuConstruction::processItem(ollama());
  const Items items{heading("a"),
                    heading("b"),
                    kSeparator,
                    kSeparator,
                    row,
                    row,
                    heading(MenuConstruction::kServersHeader),
                    row};
  const std::vector<ItemKey> keys = itemKeys(items);
  EXPECT_EQ(std::set<ItemKey>(keys.begin(), keys.end()).size(), items.size());
}

/// The process under the two headings.
Items twoSections() {
  const MenuItem row = MenuConstruction::processItem(ollama());
  return {heading(MenuConstruction::kTopHeader), row, kSeparator,
          heading(MenuConstruction::kServersHeader), row};
}

TEST(FoundItem, IsTheOneInTheSameSection) {
  const Items items = twoSections();
  EXPECT_EQ(findItem(items, itemKeys(items)[1]), 1U);
  EXPECT_EQ(findItem(items, itemKeys(items)[4]), 4U);
  const Items serversAlone(items.begin() + 2, items.end());
  EXPECT_EQ(findItem(serversAlone, itemKeys(items)[4]), 2U) << "where others went above it";
  EXPECT_EQ(findItem(items, itemKeys(serversAlone)[2]), 4U) << "where others came above it";
}

TEST(FoundItem, IsTheOneInAnotherSectionWhereItsOwnHasNone) {
  const Items items = twoSections();
  const Items topAlone(items.begin(), items.begin() + 2);
  EXPECT_EQ(findItem(topAlone, itemKeys(items)[4]), 1U);
}

TEST(FoundItem, IsNoneWhenItIsGone) {
  const Items items = twoSections();
  EXPECT_EQ(findItem({}, itemKeys(items)[1]), std::nullopt);
  EXPECT_EQ(findItem(Items{kSeparator, MenuConstruction::launchAgentItem(syncLaunchAgent())},
                     itemKeys(items)[1]),
            std::nullopt);
}

}  // namespace
