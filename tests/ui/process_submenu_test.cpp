#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <variant>
#include <vector>

#include "fakes/row_name.h"
#include "ui/shown_process.h"

namespace {

using testing::ElementsAre;

class ProcessSubmenu : public ShownProcess {};

TEST_F(ProcessSubmenu, OffersQuitAndForceQuit) {
  EXPECT_THAT(submenuTitles(), ElementsAre("1.50 GB · pid 77", "Ollama", "---", "Quit",
                                           "Force Quit ( 1.5 GB)", "Full details…"));
  const auto entries = submenu();
  EXPECT_FALSE(entries.at(0).enabled);
  EXPECT_FALSE(entries.at(1).enabled);
  for (std::size_t i = 3; i < 6; ++i) EXPECT_TRUE(entries.at(i).enabled) << i;
  EXPECT_EQ(entries.at(3).action, Action::quitProcess);
  EXPECT_EQ(entries.at(3).representedObject, RepresentedObject(std::int32_t{77}));
  EXPECT_EQ(entries.at(4).action, Action::forceProcess);
  EXPECT_EQ(entries.at(4).representedObject, RepresentedObject(process_));
  EXPECT_EQ(entries.at(5).action, Action::showDetails);
  EXPECT_EQ(entries.at(5).representedObject, RepresentedObject(process_));
}

TEST_F(ProcessSubmenu, SaysAboveQuitWhatRunsBelowIt) {
  process_.processesBelow = 7;
  EXPECT_THAT(submenuTitles(),
              ElementsAre("1.50 GB · pid 77", "Ollama", "---", "7 other processes run below it",
                          "Quit", "Force Quit ( 1.5 GB)", "Full details…"));
  EXPECT_FALSE(submenu().at(3).enabled);
  process_.processesBelow = 1;
  EXPECT_EQ(submenuTitles().at(3), "1 other process runs below it");
}

TEST_F(ProcessSubmenu, OffersNeitherWhenProtected) {
  protect();
  EXPECT_THAT(submenuTitles(),
              ElementsAre("1.50 GB · pid 77", "Ollama · root", "---",
                          "Protected (root) — cannot quit from Vorda", "Full details…"));
  EXPECT_FALSE(submenu().at(3).enabled);
  EXPECT_EQ(submenu().at(4).action, Action::showDetails);
}

TEST_F(ProcessSubmenu, OffersToUnloadEachOfItsLaunchAgentsInOrder) {
  process_.matchedAgents = {"b.gateway", "a.gateway"};
  const auto entries = submenu();
  ASSERT_EQ(entries.size(), 8U);
  EXPECT_EQ(entries.at(6).title, "Unload b.gateway");
  EXPECT_EQ(entries.at(6).action, Action::unloadByLabel);
  EXPECT_EQ(entries.at(6).representedObject, RepresentedObject(std::string("b.gateway")));
  EXPECT_EQ(entries.at(7).title, "Unload a.gateway");
}

TEST_F(ProcessSubmenu, SpeaksOfOneProcessThroughout) {
  process_.matchedAgents = {"gateway"};
  const ProcessReference expected{77, 99};
  EXPECT_EQ(item().process, expected);
  for (const MenuItem& entry : submenu()) EXPECT_EQ(entry.process, expected) << entry.title;
}

struct DockerRow {
  const char* name;
  const char* displayName;
  const char* product;
  bool isProtected;
  bool hasItem;
};

class DockerItem : public ProcessSubmenu, public testing::WithParamInterface<DockerRow> {};

TEST_P(DockerItem, IsThereForProtectedDockerProcesses) {
  const auto& row = GetParam();
  process_.displayName = row.displayName;
  process_.product = row.product;
  process_.isProtected = row.isProtected;
  const auto entries = submenu();
  EXPECT_EQ(entries.at(4).action == Action::openDockerHelp, row.hasItem);
  if (!row.hasItem) return;
  EXPECT_EQ(entries.at(4).title, "Quit Docker Desktop from the system tray whale");
  EXPECT_EQ(entries.at(4).representedObject, RepresentedObject{});
  machine().words = platform::kMacWords;
  EXPECT_EQ(submenu().at(4).title, "Quit Docker Desktop from the menu bar whale");
}

struct MlxRow {
  std::string name;
  std::string product;
  LabRole role;
  platform::Words words;
  bool hasLine;
};

class MlxLine : public ProcessSubmenu, public testing::WithParamInterface<MlxRow> {};

TEST_P(MlxLine, StandsAboveForceQuitOfAServer) {
  const MlxRow& row = GetParam();
  process_.product = row.product;
  process_.labRole = row.role;
  machine().words = row.words;
  const auto entries = submenu();
  const auto force = std::ranges::find(entries, Action::forceProcess, &MenuItem::action);
  ASSERT_GT(force - entries.begin(), 0);
  const MenuItem& above = *(force - 1);
  EXPECT_EQ(above.title == "Quit first: it gives wired memory back", row.hasLine) << above.title;
  EXPECT_EQ(above.enabled, !row.hasLine);
}

INSTANTIATE_TEST_SUITE_P(
    Table, MlxLine,
    testing::Values(MlxRow{"Server", "MLX", LabRole::inference, platform::kMacWords, true},
                    MlxRow{"Training", "MLX", LabRole::training, platform::kMacWords, false},
                    MlxRow{"OtherServer", "Ollama", LabRole::inference, platform::kMacWords, false},
                    MlxRow{"ElsewhereThanOnAMac", "MLX", LabRole::inference, platform::kLinuxWords,
                           false}),
    rowName<MlxRow>);

INSTANTIATE_TEST_SUITE_P(
    Table, DockerItem,
    testing::Values(DockerRow{"ByProduct", "engine", "Docker", true, true},
                    DockerRow{"ByName", "Docker Desktop", "App", true, true},
                    DockerRow{"ByNameInCapitals", "DOCKERD", "Process", true, true},
                    DockerRow{"NotByProductInLowerCase", "engine", "docker", true, false},
                    DockerRow{"NotByPartOfTheProduct", "engine", "Docker Desktop", true, false},
                    DockerRow{"NotForOnesOwn", "Docker Desktop", "Docker", false, false}),
    rowName<DockerRow>);

}  // namespace
