#include "launch_agents/launch_agent_scanner.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "fakes/scripted_platform.h"

namespace {

using testing::ElementsAre;

class LaunchAgentScan : public testing::Test {
 protected:
  LaunchAgentScan() { resetMachine(); }

  static std::vector<std::string> labels() {
    std::vector<std::string> result;
    for (const auto& launchAgent : LaunchAgentScanner::scan()) result.push_back(launchAgent.label);
    return result;
  }
};

TEST_F(LaunchAgentScan, OfNoFilesIsEmpty) {
  EXPECT_TRUE(LaunchAgentScanner::scan().empty());
}

TEST_F(LaunchAgentScan, JoinsAFileWithItsLoadedEntry) {
  machine().launchAgentFiles = {{"sync", "/units/sync.service", {"/usr/bin/sync", "--now"}, true}};
  machine().loadedLaunchAgents = {{"sync", 77}};
  EXPECT_THAT(LaunchAgentScanner::scan(),
              ElementsAre(VordaLaunchAgent{"sync", "/units/sync.service", "/usr/bin/sync --now",
                                           true, true, 77}));
}

TEST_F(LaunchAgentScan, AnEntryWithoutAPidIsLoaded) {
  machine().launchAgentFiles = {{"sync", "/units/sync.service", {}, false}};
  machine().loadedLaunchAgents = {{"sync", std::nullopt}};
  EXPECT_THAT(LaunchAgentScanner::scan(),
              ElementsAre(VordaLaunchAgent{"sync", "/units/sync.service", "", false, true, {}}));
}

TEST_F(LaunchAgentScan, AFileWithoutAnEntryIsNotLoaded) {
  machine().launchAgentFiles = {{"sync", "/units/sync.service", {"sync"}, false}};
  machine().loadedLaunchAgents = {{"other", 5}};
  EXPECT_THAT(
      LaunchAgentScanner::scan(),
      ElementsAre(VordaLaunchAgent{"sync", "/units/sync.service", "sync", false, false, {}}));
}

TEST_F(LaunchAgentScan, IsEmptyWhereTheManagerCannotBeAsked) {
  machine().launchAgentFiles = {{"ollama", "/units/ollama.service", {"ollama"}, true}};
  machine().managerAnswers = false;
  EXPECT_TRUE(LaunchAgentScanner::scan().empty()) << "whether it runs is not known";
}

TEST_F(LaunchAgentScan, NotesWhenThePidsWereAskedFor) {
  machine().launchAgentFiles = {{.label = "sync"}, {.label = "other"}};
  machine().loadedLaunchAgents = {{"sync", 77}};
  machine().loadedAskedAt = 500;
  const auto launchAgents = LaunchAgentScanner::scan();
  ASSERT_EQ(launchAgents.size(), 2U);
  EXPECT_EQ(launchAgents[1].pidAskedAt, 500U);
}

TEST_F(LaunchAgentScan, ShowsTheFirstFourWordsOfTheProgram) {
  machine().launchAgentFiles = {{"a", "", {"1", "2", "3", "4"}, false},
                                {"b", "", {"1", "2", "3", "4", "5"}, false}};
  const auto launchAgents = LaunchAgentScanner::scan();
  EXPECT_EQ(launchAgents.at(0).program, "1 2 3 4");
  EXPECT_EQ(launchAgents.at(1).program, "1 2 3 4");
}

TEST_F(LaunchAgentScan, PutsAIToolingFirstThenSortsByLabelInByteOrder) {
  machine().launchAgentFiles = {{"zeta", "", {}, false},
                                {"alpha", "", {}, false},
                                {"Beta", "", {}, false},
                                {"my-gateway", "", {}, false},
                                {"a-helper", "", {"/opt/OLLAMA/bin"}, false}};
  EXPECT_THAT(labels(), ElementsAre("a-helper", "my-gateway", "Beta", "alpha", "zeta"));
}

TEST_F(LaunchAgentScan, KeepsTheUsersRecordFirstWhenBothFoldersHoldALabel) {
  machine().launchAgentFiles = {{"ollama", "/home/unit", {}, false},
                                {"ollama", "/etc/unit", {}, false}};
  const auto launchAgents = LaunchAgentScanner::scan();
  ASSERT_EQ(launchAgents.size(), 2U);
  EXPECT_EQ(launchAgents[0].plistPath, "/home/unit");
  EXPECT_EQ(launchAgents[1].plistPath, "/etc/unit");
}

// A sort that is not stable keeps the order of few.
TEST_F(LaunchAgentScan, KeepsTheFoldersOrderAmongManyOfOneLabel) {
  std::vector<std::string> expected;
  for (const auto* label : {"ollama", "sync"}) {
    for (int i = 0; i < 100; ++i) expected.push_back(label + std::to_string(i));
  }
  for (int i = 0; i < 100; ++i) {
    machine().launchAgentFiles.push_back({"sync", "sync" + std::to_string(i), {}, false});
    machine().launchAgentFiles.push_back({"ollama", "ollama" + std::to_string(i), {}, false});
  }
  std::vector<std::string> paths;
  for (const auto& launchAgent : LaunchAgentScanner::scan()) paths.push_back(launchAgent.plistPath);
  EXPECT_EQ(paths, expected);
}

}  // namespace
