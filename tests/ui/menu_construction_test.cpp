#include "ui/menu_construction.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "fakes/row_name.h"
#include "fakes/scripted_platform.h"

namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::Not;

constexpr const char* kTop = "— Top RAM (colors match graph) —";
constexpr const char* kByName = "— By name (colors match graph) —";
constexpr const char* kTraining = "— Training & fine-tunes (LoRA, SFT, …) —";
constexpr const char* kServers = "— Model servers —";
constexpr const char* kTools = "— Agents & tools —";
constexpr const char* kAutoStart = "— Auto-start agents —";

VordaProcess process(std::int32_t pid, double memMB, LabRole role = LabRole::none) {
  return {.pid = pid,
          .displayName = "p" + std::to_string(pid),
          .product = "App",
          .memMB = memMB,
          .labRole = role,
          .ownerName = "ada"};
}

/// `count` processes with pids from 1 and sizes that fall from 1000 MiB.
std::vector<VordaProcess> processes(int count, LabRole role = LabRole::none) {
  std::vector<VordaProcess> result;
  for (int i = 1; i <= count; ++i) result.push_back(process(i, 1001 - i, role));
  return result;
}

class MenuConstructionTest : public testing::Test {
 protected:
  MenuConstructionTest() { resetMachine(); }

  Menu menu() const {
    return MenuConstruction::build({.processes = processes_,
                                    .launchAgents = launchAgents_,
                                    .sys = sys_,
                                    .arrangement = &arrangement_});
  }

  /// The titles of the items; "---" for a separator, "===" for the strip.
  static std::vector<std::string> titles(const std::vector<MenuItem>& items) {
    std::vector<std::string> result;
    result.reserve(items.size());
    for (const MenuItem& item : items) {
      result.push_back(item.kind == MenuItem::Kind::separator ? "---"
                       : item.kind == MenuItem::Kind::strip   ? "==="
                                                              : item.title);
    }
    return result;
  }
  std::vector<std::string> titles() const { return titles(menu().items); }

  /// The rows that follow a header.
  std::vector<MenuItem> section(const std::string& header) const {
    const std::vector<MenuItem> items = menu().items;
    const auto first = std::find_if(items.begin(), items.end(),
                                    [&](const auto& item) { return item.title == header; });
    if (first == items.end()) return {};
    const auto last = std::find_if(first, items.end(), [](const auto& item) {
      return item.kind == MenuItem::Kind::separator;
    });
    return {first + 1, last};
  }
  std::vector<std::int32_t> pids(const std::string& header) const {
    std::vector<std::int32_t> result;
    for (const MenuItem& row : section(header)) {
      if (row.action != Action::showMore) result.push_back(row.process.value().pid);
    }
    return result;
  }

  std::vector<VordaProcess> processes_;
  MenuArrangement arrangement_;
  std::vector<VordaLaunchAgent> launchAgents_;
  SystemMemory::Snapshot sys_{.usedGB = 9.26, .totalGB = 15.5, .freeGB = 2};
};

TEST_F(MenuConstructionTest, OfNothingHasItsSummaryAndCommands) {
  const Menu empty = menu();
  EXPECT_THAT(titles(empty.items),
              ElementsAre("===", "System   9.3 / 16 GB used", "Training / fine-tunes  none",
                          "Model servers  none", "---", kTop, "  (nothing above threshold)", "---",
                          "Refresh now", "Open System Monitor", "About Vorda",
                          "Developed by Halvek", "---", "Quit Vorda"));
  EXPECT_TRUE(empty.items[0].strip->segments.empty());
}

TEST_F(MenuConstructionTest, NamesTheMonitorOfThePlatform) {
  machine().words = platform::kMacWords;
  EXPECT_THAT(titles(), Contains("Open Activity Monitor"));
}

TEST_F(MenuConstructionTest, GreysWhatOnlyTellsSomething) {
  processes_ = {process(1, 200, LabRole::training), process(2, 300, LabRole::inference),
                process(3, 50, LabRole::agent)};
  launchAgents_ = {{.label = "ollama", .loaded = true}};
  for (const MenuItem& item : menu().items) {
    const bool acts = item.action != Action::none || !item.submenu.empty() ||
                      item.kind == MenuItem::Kind::separator;
    EXPECT_EQ(item.enabled, acts) << item.title;
  }
}

TEST_F(MenuConstructionTest, EndsWithItsCommands) {
  processes_ = processes(20, LabRole::training);
  launchAgents_ = {{.label = "ollama", .loaded = true}};
  const std::vector<MenuItem> items = menu().items;
  const auto first = std::find_if(items.begin(), items.end(), isCommand);
  ASSERT_NE(first, items.end());
  EXPECT_EQ(first->title, "Refresh now");
  for (auto item = first; item != items.end(); ++item) {
    EXPECT_TRUE(isCommand(*item) || item->action == Action::none) << item->title;
    EXPECT_TRUE(item->submenu.empty()) << item->title;
  }
}

TEST_F(MenuConstructionTest, EachCommandHasItsActionAndRepresentsNothing) {
  const std::vector<std::pair<std::string, Action>> commands = {
      {"Refresh now", Action::refreshNow},
      {"Open System Monitor", Action::openAM},
      {"About Vorda", Action::about},
      {"Developed by Halvek", Action::none},
      {"Quit Vorda", Action::quitApp}};
  const Menu built = menu();
  for (const auto& [title, action] : commands) {
    const auto item = std::find_if(built.items.begin(), built.items.end(),
                                   [&t = title](const auto& one) { return one.title == t; });
    ASSERT_NE(item, built.items.end()) << title;
    EXPECT_EQ(item->action, action) << title;
    EXPECT_EQ(item->representedObject, RepresentedObject{}) << title;
    EXPECT_EQ(item->toolTip, "") << title;
    EXPECT_TRUE(item->submenu.empty()) << title;
  }
}

TEST_F(MenuConstructionTest, HasItsSectionsInOrder) {
  processes_ = {process(1, 90, LabRole::agent), process(2, 80, LabRole::inference),
                process(3, 70, LabRole::training), process(4, 60)};
  launchAgents_ = {{.label = "gateway", .loaded = true}};
  std::vector<std::string> all = titles();
  all.erase(std::remove_if(all.begin(), all.end(),
                           [](const auto& t) { return t.rfind("—", 0) != 0 && t != "---"; }),
            all.end());
  EXPECT_THAT(all, ElementsAre("---", kTop, "---", kTraining, "---", kServers, "---", kTools, "---",
                               kAutoStart, "---", "---"));
  EXPECT_THAT(pids(kTop), ElementsAre(1, 2, 3, 4));
  EXPECT_THAT(pids(kTraining), ElementsAre(3));
  EXPECT_THAT(pids(kServers), ElementsAre(2));
  EXPECT_THAT(pids(kTools), ElementsAre(1));
}

TEST_F(MenuConstructionTest, CountsAndAddsUpTrainingAndServers) {
  processes_ = {process(1, 1024, LabRole::training), process(2, 512, LabRole::training),
                process(3, 2560, LabRole::inference), process(4, 99999)};
  EXPECT_THAT(titles(), Contains("Training / fine-tunes  2  ·  1.5 GB"));
  EXPECT_THAT(titles(), Contains("Model servers  1  ·  2.5 GB"));
}

TEST_F(MenuConstructionTest, ShowsTrainingBeforeServersInTheSummary) {
  const auto all = titles();
  EXPECT_EQ(all.at(2), "Training / fine-tunes  none");
  EXPECT_EQ(all.at(3), "Model servers  none");
}

TEST_F(MenuConstructionTest, SortsByMemoryAndKeepsTheScansOrderAmongEquals) {
  processes_ = {process(1, 60), process(2, 80), process(3, 60), process(4, 80)};
  EXPECT_THAT(pids(kTop), ElementsAre(2, 4, 1, 3));
}

// A sort that is not stable keeps the order of few.
TEST_F(MenuConstructionTest, KeepsTheScansOrderAmongManyEquals) {
  for (int pid = 100; pid > 0; --pid) processes_.push_back(process(pid, 60));
  const auto shown = pids(kTop);
  ASSERT_GT(shown.size(), 5U);
  for (std::size_t i = 0; i < shown.size(); ++i) EXPECT_EQ(shown[i], 100 - static_cast<int>(i));
}

struct LimitRow {
  const char* name;
  LabRole role;
  const char* header;
  int present;
  std::size_t shown;
};

class SectionLimit : public MenuConstructionTest, public testing::WithParamInterface<LimitRow> {};

TEST_P(SectionLimit, ShowsTheLargest) {
  processes_ = processes(GetParam().present, GetParam().role);
  std::reverse(processes_.begin(), processes_.end());
  const auto shown = pids(GetParam().header);
  ASSERT_EQ(shown.size(), GetParam().shown);
  for (std::size_t i = 0; i < shown.size(); ++i) {
    EXPECT_EQ(shown[i], static_cast<std::int32_t>(i + 1));
  }
}

INSTANTIATE_TEST_SUITE_P(
    Table, SectionLimit,
    testing::Values(LimitRow{"EightInAll", LabRole::none, kTop, 8, 8},
                    LimitRow{"NineInAll", LabRole::none, kTop, 9, 8},
                    LimitRow{"TwelveJobs", LabRole::training, kTraining, 12, 12},
                    LimitRow{"ThirteenJobs", LabRole::training, kTraining, 13, 12},
                    LimitRow{"TwelveServers", LabRole::inference, kServers, 12, 12},
                    LimitRow{"ThirteenServers", LabRole::inference, kServers, 13, 12},
                    LimitRow{"TwelveTools", LabRole::agent, kTools, 12, 12},
                    LimitRow{"ThirteenTools", LabRole::agent, kTools, 13, 12}),
    rowName<LimitRow>);

TEST_F(MenuConstructionTest, CountsMoreServersThanItLists) {
  processes_ = processes(13, LabRole::inference);
  EXPECT_EQ(pids(kServers).size(), 12U);
  // 1000 + 999 + … + 988 MiB
  EXPECT_THAT(titles(), Contains("Model servers  13  ·  12.6 GB"));
}

TEST_F(MenuConstructionTest, GivesTheStripItsSixLargest) {
  processes_ = processes(6);
  EXPECT_EQ(menu().items[0].strip->segments.size(), 6U);
  processes_ = processes(7);
  std::reverse(processes_.begin(), processes_.end());
  const auto segments = menu().items[0].strip->segments;
  ASSERT_EQ(segments.size(), 6U);
  EXPECT_EQ(segments.front().pid, 1);
  EXPECT_EQ(segments.back().pid, 6);
}

TEST_F(MenuConstructionTest, TheStripIsAnUntitledGreyItemWithThePressure) {
  const MenuItem strip = menu().items[0];
  EXPECT_EQ(strip.kind, MenuItem::Kind::strip);
  EXPECT_EQ(strip.title, "");
  EXPECT_FALSE(strip.enabled);
  EXPECT_DOUBLE_EQ(strip.strip->pressure, 9.26 / 15.5);
}

TEST_F(MenuConstructionTest, TheStripIsEmptyWhenTheMemoryIsUnknown) {
  processes_ = processes(3);
  sys_ = {};
  EXPECT_EQ(*menu().items[0].strip, MemoryPressureView{});
  EXPECT_THAT(titles(), Contains("System   0.0 / 0 GB used"));
}

TEST_F(MenuConstructionTest, ALimitIsTheSystemAndTheStrip) {
  processes_ = {process(1, 512)};
  sys_ = {.usedGB = 0.26, .totalGB = 0.5, .isLimit = true};
  const Menu limited = menu();
  EXPECT_EQ(limited.items[1].title, "System   0.3 / 0.5 GB used");
  EXPECT_EQ(limited.items[1].toolTip, "Limit of this container: 512 MB");
  EXPECT_EQ(limited.items[0].strip->segments.front().fraction, 1.0);
  EXPECT_DOUBLE_EQ(limited.items[0].strip->pressure, 0.52);
  sys_.totalGB = 64;
  EXPECT_EQ(menu().items[1].title, "System   0.3 / 64 GB used");
}

TEST_F(MenuConstructionTest, NamesTheLargestFromAHundredMegabytesOn) {
  processes_ = {process(1, 99.9)};
  EXPECT_EQ(titles().at(2), "Training / fine-tunes  none");
  processes_ = {process(1, 100)};
  EXPECT_EQ(titles().at(2), "Largest  100 MB  p1");
  processes_ = {process(1, 100), process(2, 2048)};
  EXPECT_EQ(titles().at(2), "Largest  2.0 GB  p2");
}

TEST_F(MenuConstructionTest, CutsTheNameOfTheLargestFrom35CharactersOn) {
  processes_ = {process(1, 100)};
  processes_[0].displayName = std::string(34, 'x');
  EXPECT_EQ(titles().at(2), "Largest  100 MB  " + std::string(34, 'x'));
  processes_[0].displayName = std::string(35, 'x');
  EXPECT_EQ(titles().at(2), "Largest  100 MB  " + std::string(32, 'x') + "…");
}

TEST_F(MenuConstructionTest, RowsSpeakOfTheProcessThatWasSampled) {
  processes_ = {process(1, 100), process(2, 90)};
  processes_[0].identity = 777;
  const auto rows = section(kTop);
  EXPECT_EQ(rows.at(0).process, (ProcessReference{1, 777}));
  EXPECT_EQ(rows.at(1).process, (ProcessReference{2, std::nullopt}));
}

TEST_F(MenuConstructionTest, ListsLaunchAgentsThatRunOrWouldInTheirOrder) {
  launchAgents_ = {{.label = "c", .loaded = true},
                   {.label = "idle"},
                   {.label = "a", .keepAlive = true},
                   {.label = "b", .keepAlive = true, .loaded = true},
                   {.label = "pid-alone", .pid = 7}};
  EXPECT_THAT(titles(section(kAutoStart)), ElementsAre("c  ·  on", "a  ·  off ↺", "b  ·  on ↺"));
}

TEST_F(MenuConstructionTest, HasNoLaunchAgentSectionWithoutLaunchAgentsToShow) {
  launchAgents_ = {{.label = "idle"}};
  EXPECT_THAT(titles(), Not(Contains(kAutoStart)));
}

TEST_F(MenuConstructionTest, ListsSixLaunchAgentsAtMost) {
  for (int i = 1; i <= 6; ++i)
    launchAgents_.push_back({.label = std::to_string(i), .loaded = true});
  EXPECT_EQ(section(kAutoStart).size(), 6U);
  launchAgents_.insert(launchAgents_.begin(), {.label = "idle"});
  launchAgents_.push_back({.label = "7", .loaded = true});
  const auto shown = titles(section(kAutoStart));
  ASSERT_EQ(shown.size(), 7U);
  EXPECT_EQ(shown.front(), "1  ·  on");
  EXPECT_EQ(shown[5], "6  ·  on");
  EXPECT_EQ(shown.back(), "… and 1 more");
}

TEST_F(MenuConstructionTest, ACutSectionEndsWithTheNextRows) {
  processes_ = processes(316, LabRole::training);
  const std::vector<MenuItem> rows = section(kTraining);
  ASSERT_EQ(rows.size(), 13U);
  const MenuItem& more = rows.back();
  EXPECT_EQ(more.title, "… and 304 more");
  EXPECT_EQ(more.action, Action::showMore);
  ASSERT_EQ(more.submenu.size(), 31U);
  EXPECT_EQ(more.submenu.front().process->pid, 13);
  EXPECT_EQ(more.submenu.back().title, "… and 274 more: run vorda in a terminal");
  EXPECT_FALSE(more.submenu.back().enabled);
}

TEST_F(MenuConstructionTest, ASectionIsWholeWhereThatIsAskedFor) {
  processes_ = processes(20, LabRole::training);
  arrangement_.wholeSections = {kTraining};
  EXPECT_EQ(section(kTraining).size(), 20U);
  EXPECT_EQ(section(kTop).size(), 9U);
  arrangement_.isWhole = true;
  EXPECT_EQ(section(kTop).size(), 20U);
}

TEST_F(MenuConstructionTest, TheFirstOfTheOrderThatIsAskedForAreShown) {
  processes_ = processes(20, LabRole::training);
  processes_[0].displayName = "Zeta";
  processes_[19].displayName = "alpha";
  processes_[18].startTime = 99;
  processes_[2].startTime = 5;
  processes_[3].gpuMemory = GpuMemory{10, {{"H100", 10}}};
  processes_[17].gpuMemory = GpuMemory{900, {{"H100", 900}}};

  EXPECT_THAT(pids(kTop), ElementsAre(1, 2, 3, 4, 5, 6, 7, 8));
  arrangement_.sortBy = SortBy::name;
  EXPECT_THAT(pids(kByName), ElementsAre(20, 10, 11, 12, 13, 14, 15, 16)) << "p2 follows p19";
  EXPECT_THAT(pids(kTraining), ElementsAre(20, 10, 11, 12, 13, 14, 15, 16, 17, 18, 19, 2));
  EXPECT_EQ(section(kTraining).back().submenu.back().process->pid, 1) << "the next ones";
  arrangement_.sortBy = SortBy::start;
  EXPECT_THAT(pids("— By start, the latest first (colors match graph) —"),
              ElementsAre(19, 3, 1, 2, 4, 5, 6, 7));
  arrangement_.sortBy = SortBy::gpu;
  EXPECT_THAT(pids("— By GPU memory (colors match graph) —"), ElementsAre(18, 4, 1, 2, 3, 5, 6, 7));
}

TEST_F(MenuConstructionTest, ASectionStaysWholeInAnotherOrder) {
  processes_ = processes(20);
  arrangement_.wholeSections = {kTop};
  arrangement_.sortBy = SortBy::name;
  EXPECT_EQ(section(kByName).size(), 20U);
}

}  // namespace
