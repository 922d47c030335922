#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "fakes/scripted_front_end.h"
#include "fakes/scripted_platform.h"
#include "ui/status_bar_controller.h"

/// A controller on a scripted machine, in a scripted front end. A test sets the machine up,
/// then calls start().
class ControllerTest : public testing::Test {
 protected:
  ControllerTest() { resetMachine(); }

  void start() { controller_.emplace(frontEnd_, Alert{.messageText = "About"}); }
  StatusBarController& controller() { return *controller_; }
  const Menu& menu() const { return *controller_->rootMenu(); }

  static ScriptedProcess& addProcess(std::int32_t pid, const std::string& program,
                                     double footprintMB) {
    machine().processes.push_back(
        {.pid = pid, .arguments = {"/usr/bin/" + program}, .footprintMB = footprintMB});
    return machine().processes.back();
  }
  static void addLaunchAgent(const std::string& label, const std::string& path = "",
                             bool keepAlive = false) {
    machine().launchAgentFiles.push_back({label, path, {}, keepAlive});
    machine().loadedLaunchAgents[label] = std::nullopt;
  }

  void openMenu() {
    controller().menuNeedsUpdate();
    controller().menuWillOpen();
  }
  void closeMenu() { controller().menuDidClose(); }

  /// The alert that was shown last.
  const Alert& lastAlert() const {
    static const Alert kNone;
    if (!frontEnd_.alerts.empty()) return frontEnd_.alerts.back();
    ADD_FAILURE() << "no alert was shown";
    return kNone;
  }

  /// From now on order() tells of each alert and each closing of the menu, with how often the
  /// machine had been sampled and the menu built by then.
  void noteOrder() {
    frontEnd_.whileAlertIsOpen = [this](const Alert& alert) { note(alert.messageText); };
    frontEnd_.whenTrackingIsCancelled = [this] { note("close"); };
  }
  /// As above, and at last how it is now.
  std::vector<std::string> order() {
    note("end");
    return order_;
  }

  std::vector<std::string> titles() const {
    std::vector<std::string> result;
    for (const MenuItem& item : menu().items) result.push_back(item.title);
    return result;
  }
  std::vector<std::int32_t> listedPids() const {
    std::vector<std::int32_t> result;
    for (const VordaProcess& process : controller_->processes()) result.push_back(process.pid);
    return result;
  }

  /// The first row that speaks of this process.
  const MenuItem& row(std::int32_t pid) const {
    return find(menu().items,
                [pid](const MenuItem& item) { return item.process && item.process->pid == pid; });
  }
  /// The first row whose title begins so.
  const MenuItem& row(const std::string& beginning) const {
    return find(menu().items,
                [&](const MenuItem& item) { return item.title.rfind(beginning, 0) == 0; });
  }
  static const MenuItem& entry(const MenuItem& row, Action action) {
    return find(row.submenu, [action](const MenuItem& item) { return item.action == action; });
  }
  /// Chooses an entry of the process's submenu.
  void choose(std::int32_t pid, Action action) { choose(entry(row(pid), action)); }
  /// Chooses an item of the menu.
  void choose(const MenuItem& item) { controller().perform({controller().rootMenu(), &item}); }
  /// Chooses an item that the menu does not hold (any more).
  void chooseOther(MenuItem item) {
    controller().perform(std::make_shared<const MenuItem>(std::move(item)));
  }

  ScriptedFrontEnd frontEnd_;
  std::optional<StatusBarController> controller_;

 private:
  void note(const std::string& what) {
    order_.push_back(what + ": sampled " + std::to_string(machine().pidListings) + ", built " +
                     std::to_string(frontEnd_.menusBuilt));
  }

  template <typename Predicate>
  static const MenuItem& find(const std::vector<MenuItem>& items, Predicate matches) {
    static const MenuItem kNone;
    const auto found = std::find_if(items.begin(), items.end(), matches);
    if (found != items.end()) return *found;
    ADD_FAILURE() << "no such item in the menu";
    return kNone;
  }

  std::vector<std::string> order_;
};
