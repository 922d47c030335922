#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <string>

#include "fakes/scripted_platform.h"
#include "frontends/terminal/scripted_screen.h"
#include "frontends/terminal/terminal_front_end.h"
#include "ui/status_bar_controller.h"

/// The real menu and its actions on a scripted machine, used at a scripted terminal.
class TerminalMenu : public testing::Test {
 protected:
  TerminalMenu() {
    resetMachine();
    screen.whenTimePasses = [](double seconds) {
      machine().clock += static_cast<std::uint64_t>(seconds * 1e9);
    };
    addProcess(10, "big", 900);
    addProcess(20, "middle", 600);
    addProcess(30, "small", 300);
  }

  static void addProcess(std::int32_t pid, const std::string& name, double mb) {
    machine().processes.push_back(
        {.pid = pid, .arguments = {"/usr/bin/" + name}, .footprintMB = mb});
  }
  static void removeProcess(std::int32_t pid) {
    std::erase_if(machine().processes, [pid](const auto& one) { return one.pid == pid; });
  }

  void run() {
    terminal::TerminalFrontEnd frontEnd(screen);
    StatusBarController controller(frontEnd, Alert{.messageText = "Vorda"});
    running = &controller;
    frontEnd.run(controller);
    running = nullptr;
    EXPECT_EQ(screen.walksGivenUp, 0);
  }
  /// For the process that is selected.
  void chooseQuit() {
    screen.press(terminal::Input::Kind::enter);
    screen.press(terminal::Input::Kind::home);
    screen.press(terminal::Input::Kind::enter);
  }
  bool shows(const std::string& text) const { return screen.shows(text); }
  bool selected(const std::string& text) const {
    return screen.reversed().find(text) != std::string::npos;
  }

  ScriptedScreen screen;
  const StatusBarController* running = nullptr;
};
