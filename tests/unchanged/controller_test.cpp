// No menu is open, and the timer's refresh finds what it found before.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "fakes/blind_front_end.h"
#include "tools/allocation_counter.h"
#include "ui/status_bar_controller.h"
#include "unchanged/busy_machine.h"

namespace {

/// Counts what it is given to show.
class CountingFrontEnd : public BlindFrontEnd {
 public:
  int menus = 0;
  int strips = 0;
  int toolTips = 0;
  int titles = 0;
  int notices = 0;

  int all() const { return menus + strips + toolTips + titles + notices; }

  void setTitle(const std::string&) override { ++titles; }
  void setToolTip(const std::string&) override { ++toolTips; }
  void menuRebuilt(std::shared_ptr<const Menu>) override { ++menus; }
  void stripChanged(const MemoryPressureView&) override { ++strips; }
  void setNotice(const std::string&) override { ++notices; }
};

class Unchanged : public testing::Test {
 protected:
  Unchanged() {
    scriptBusyMachine();
    controller_.emplace(frontEnd_, Alert{});
    for (int i = 0; i < 3; ++i) refresh();
    told_ = frontEnd_.all();
  }

  void refresh() {
    forgetQuestions();
    const std::uint64_t before = allocationCount();
    frontEnd_.runTimer();
    allocations_ = allocationCount() - before;
  }
  /// What the front end was given to show since this was asked last.
  int told() { return frontEnd_.all() - std::exchange(told_, frontEnd_.all()); }
  ScriptedProcess& process(std::int32_t pid) { return *machine().find(pid); }

  CountingFrontEnd frontEnd_;
  std::optional<StatusBarController> controller_;
  int told_ = 0;
  std::uint64_t allocations_ = 0;  ///< of the last refresh
};

TEST_F(Unchanged, RefreshAllocatesNothingAndShowsNothing) {
  const auto menu = controller_->rootMenu();
  refresh();
  EXPECT_EQ(allocations_, 0U);
  EXPECT_EQ(told(), 0);
  EXPECT_EQ(controller_->rootMenu(), menu);
  EXPECT_EQ(controller_->processes().size(), 37U);
}

TEST_F(Unchanged, MemoryBelowATenthOfAGigabyteIsOnlyTheStripsPressure) {
  const auto menu = controller_->rootMenu();
  machine().memory.inUse->usedBytes += 1 << 20;
  refresh();
  EXPECT_EQ(allocations_, 0U);
  EXPECT_EQ(told(), 0) << "it is told in whole percent";
  EXPECT_EQ(controller_->rootMenu(), menu);
  EXPECT_DOUBLE_EQ(stripOf(*menu)->pressure, (8192.0 + 1) / 16384);
}

TEST_F(Unchanged, PressureThatIsAnotherIsTheStripsAlone) {
  constexpr double kGiB = 1 << 30;
  machine().memory = {1024 * kGiB, platform::MemoryInUse{5.11 * kGiB, kGiB}};
  refresh();
  told();
  const int strips = frontEnd_.strips;
  machine().memory.inUse->usedBytes = 5.149 * kGiB;  // 5.1 GB still, and 1 % instead of 0
  refresh();
  EXPECT_EQ(frontEnd_.strips, strips + 1);
  EXPECT_EQ(told(), 1);
  EXPECT_EQ(allocations_, 0U);
}

TEST_F(Unchanged, EachProcessIsLookedAtOnce) {
  refresh();
  std::vector<std::int32_t> asked = machine().footprintsRead;
  ASSERT_EQ(std::ranges::count(asked, 202), 1) << "a member that is not listed";
  std::ranges::sort(asked);
  EXPECT_EQ(std::ranges::adjacent_find(asked), asked.end());
}

TEST_F(Unchanged, AnOwnersNewNameIsShownWithinAMinute) {
  constexpr int kRefreshesInAMinute = 12;
  const int menus = frontEnd_.menus;
  machine().loginNames[1001] = "hopper";
  for (int i = 0; i < kRefreshesInAMinute; ++i) refresh();
  EXPECT_EQ(frontEnd_.menus, menus + 1);
}

struct ChangeRow {
  const char* name;
  std::function<void()> change;
};

class Change : public Unchanged, public testing::WithParamInterface<ChangeRow> {};

TEST_P(Change, IsShownOnceAndThenNothingAgain) {
  const int menus = frontEnd_.menus;
  GetParam().change();
  refresh();
  EXPECT_EQ(frontEnd_.menus, menus + 1);
  EXPECT_EQ(frontEnd_.titles, 1) << "the title never changes";
  told();
  refresh();
  refresh();
  EXPECT_EQ(told(), 0);
  EXPECT_EQ(allocations_, 0U);
}

ScriptedProcess& on(std::int32_t pid) {
  return *machine().find(pid);
}

const ChangeRow kChanges[] = {
    {"MemoryOfAProcess", [] { *on(200).footprintMB += 1; }},
    {"MemoryOfAMemberThatIsNotListed", [] { on(202).footprintMB = 15; }},
    {"EndOfAMember",
     [] { std::erase_if(machine().processes, [](auto& one) { return one.pid == 202; }); }},
    {"MemoryOfTheMachine", [] { machine().memory.inUse->usedBytes += 1 << 30; }},
    {"MemoryThatTheMachineHas", [] { machine().memory.totalBytes *= 2; }},
    {"Birth", [] { machine().processes.push_back({.pid = 900, .arguments = {"/usr/bin/gimp"}}); }},
    {"End", [] { std::erase_if(machine().processes, [](auto& one) { return one.pid == 139; }); }},
    {"CommandLine", [] { on(139).arguments = {"/usr/bin/gimp"}; }},
    {"Identity", [] { on(139).identity = 2; }},
    {"StartTime", [] { on(139).startTime = 7; }},
    {"Owner", [] { on(220).effectiveUid = 0; }},
    {"MappedMemory", [] { on(200).fileMB += 300; }},
    {"Parent", [] { on(139).parent = 200; }},
    {"LaunchAgentThatStops", [] { machine().loadedLaunchAgents["ollama"] = std::nullopt; }},
    {"LaunchAgentsFile",
     [] {
       machine().launchAgentFiles.front().programArguments = {"ollama", "start"};
     }},
    {"LaunchAgentThatIsNew",
     [] {
       machine().launchAgentFiles.push_back({"hermes", "/h.service", {"h"}, true});
     }},
    {"ServiceManagerThatIsGone", [] { machine().managerAnswers = false; }},
};

std::string nameOfChange(const testing::TestParamInfo<ChangeRow>& info) {
  return info.param.name;
}
INSTANTIATE_TEST_SUITE_P(Table, Change, testing::ValuesIn(kChanges), nameOfChange);

TEST_F(Unchanged, MenuIsBuiltAnewWhenItOpensAndWhenItHasClosed) {
  controller_->menuNeedsUpdate();
  controller_->menuWillOpen();
  EXPECT_EQ(told(), 1);
  controller_->menuDidClose();
  EXPECT_EQ(told(), 1);
}

TEST_F(Unchanged, ARequestToQuitIsCountedOn) {
  process(139).ignoresQuit = true;
  const auto menu = controller_->rootMenu();
  for (const MenuItem& row : menu->items) {
    if (!row.process || row.process->pid != 139) continue;
    for (const MenuItem& item : row.submenu) {
      if (item.action == Action::quitProcess) controller_->perform({menu, &item});
    }
  }
  refresh();
  told();
  machine().clock += 5'000'000'000;
  refresh();
  EXPECT_EQ(told(), 1) << "it says since when";
}

}  // namespace
