// A machine on which a call fails, each call in turn, each way it can. Whatever it is, no
// process but the chosen one is signalled, nothing is shown that makes no sense, and the next
// refresh shows all again.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cerrno>
#include <cmath>
#include <set>

#include "fakes/row_name.h"
#include "ui/controller_test.h"
#include "ui/waiting_times.h"

namespace {

using testing::IsSubsetOf;

constexpr std::int32_t kTrainer = 10;
constexpr std::int32_t kServer = 11;
constexpr std::int32_t kForeign = 12;
constexpr std::int32_t kBrowser = 13;
constexpr std::int32_t kAll[] = {kTrainer, kServer, kForeign, kBrowser};

struct WayRow {
  const char* name;
  bool andAllLater;
  int error;
};

class FailingPlatform : public ControllerTest, public testing::WithParamInterface<WayRow> {
 protected:
  static void setUpMachine() {
    resetMachine();
    auto& processes = machine().processes;
    processes.push_back({.pid = kTrainer, .arguments = {"python3", "train.py"}, .identity = 100});
    processes.push_back({.pid = kServer, .arguments = {"ollama", "serve"}, .identity = 101});
    processes.push_back(
        {.pid = kForeign, .arguments = {"vllm", "serve"}, .effectiveUid = 1001, .identity = 102});
    processes.push_back({.pid = kBrowser, .arguments = {"firefox"}, .identity = 103});
    addLaunchAgent("vorda-gateway", "/home/ada/gateway.service", true);
  }

  /// What somebody does in a minute: looks, quits the server, ends the trainer, stops and
  /// starts the launch agent. What the menu does not offer is not chosen.
  void useAll() {
    frontEnd_.advance(WaitingTimes::kRefreshInterval);
    expectSense();
    chooseIfThere(kServer, Action::quitProcess);
    expectSense();
    chooseIfThere(kTrainer, Action::forceProcess);
    expectSense();
    for (const Action action : {Action::unloadLaunchAgent, Action::loadLaunchAgent})
      chooseIfThere(action);
    openMenu();
    frontEnd_.advance(WaitingTimes::kRefreshInterval);
    closeMenu();
    expectSense();
  }

  void expectSense() const {
    EXPECT_THAT(listedPids(), IsSubsetOf(kAll));
    for (const VordaProcess& process : controller_->processes()) {
      EXPECT_TRUE(std::isfinite(process.memMB) && process.memMB >= 0);
      EXPECT_FALSE(process.displayName.empty());
      EXPECT_EQ(process.isProtected, process.pid == kForeign) << process.pid;
    }
    const MemoryPressureView& strip = *menu().items.front().strip;
    EXPECT_TRUE(strip.pressure >= 0 && strip.pressure <= 1) << strip.pressure;
    for (const std::string& title : titles()) {
      EXPECT_EQ(title.find("nan"), std::string::npos) << title;
      EXPECT_EQ(title.find("inf"), std::string::npos) << title;
    }
  }

  void chooseIfThere(std::int32_t pid, Action action) {
    for (const MenuItem& item : menu().items) {
      if (item.process && item.process->pid == pid) return performIfThere(item, action);
    }
  }
  void chooseIfThere(Action action) {
    for (const MenuItem& item : menu().items) {
      if (item.title.find("vorda-gateway") != std::string::npos) {
        return performIfThere(item, action);
      }
    }
  }

 private:
  void performIfThere(const MenuItem& row, Action action) {
    for (const MenuItem& item : row.submenu) {
      if (item.action == action && item.enabled) return choose(item);
    }
  }
};

TEST_P(FailingPlatform, AtEachCall) {
  int failing = 1;
  for (bool someFailed = true; someFailed; ++failing) {
    SCOPED_TRACE("call " + std::to_string(failing));
    setUpMachine();
    frontEnd_.alerts.clear();
    machine().fault = {failing, GetParam().andAllLater, GetParam().error};
    start();
    useAll();
    someFailed = machine().calls >= failing;

    machine().fault.reset();
    std::set<std::int32_t> living;
    for (const auto& process : machine().processes) living.insert(process.pid);
    std::set<std::int32_t> signalled;
    for (const auto& signal : machine().signals) {
      signalled.insert(signal.pid);
      EXPECT_EQ(signal.force, signal.pid == kTrainer);
    }
    EXPECT_THAT(signalled, IsSubsetOf({kServer, kTrainer}));
    frontEnd_.advance(WaitingTimes::kRefreshInterval);
    EXPECT_THAT(listedPids(), testing::UnorderedElementsAreArray(living));
    expectSense();
    controller_.reset();
    if (HasFailure()) return;
  }
  EXPECT_GT(failing, 40) << "calls were made to fail";
}

INSTANTIATE_TEST_SUITE_P(Table, FailingPlatform,
                         testing::Values(WayRow{"Interrupted", false, EINTR},
                                         WayRow{"InputOutput", false, EIO},
                                         WayRow{"NoSuchProcess", false, ESRCH},
                                         WayRow{"NotPermitted", false, EPERM},
                                         WayRow{"InputOutputFromThereOn", true, EIO},
                                         WayRow{"NoSuchProcessFromThereOn", true, ESRCH}),
                         rowName<WayRow>);

}  // namespace
