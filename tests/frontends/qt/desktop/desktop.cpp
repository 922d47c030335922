#include "frontends/qt/desktop/desktop.h"

#include <gtest/gtest.h>

#include <chrono>
#include <csignal>
#include <fstream>

#include "tools/eventually.h"

namespace {

/// A session bus that starts nobody: what is installed on this machine is no part of the test.
std::string writeBusConfiguration(const TempFolder& folder) {
  std::string path = (folder / "bus.conf").string();
  std::ofstream(path) << "<busconfig><type>session</type><listen>unix:path="
                      << (folder / "bus").string()
                      << "</listen><auth>EXTERNAL</auth><policy context='default'>"
                         "<allow send_destination='*' eavesdrop='true'/><allow eavesdrop='true'/>"
                         "<allow own='*'/></policy></busconfig>";
  return path;
}

}  // namespace

Desktop::Desktop() {
  // Xvfb picks a display number that is free, and says it. It must not start over whenever
  // its last client goes: that may be a tool that looks before the program has come.
  screen_ = std::make_unique<BackgroundProgram>(std::vector<std::string>{
      "Xvfb", "-displayfd", "1", "-screen", "0", "1024x1200x24", "-nolisten", "tcp", "-noreset"});
  bus_ = std::make_unique<BackgroundProgram>(
      std::vector<std::string>{"dbus-daemon", "--config-file=" + writeBusConfiguration(folder_),
                               "--nofork", "--nopidfile", "--print-address=1"});
  for (const auto& [program, name] :
       {std::pair{screen_.get(), "Xvfb"}, std::pair{bus_.get(), "dbus-daemon"}}) {
    if (!program->started()) reason_ = std::string(name) + " is not installed";
  }
  if (!BackgroundProgram({"xdotool"}).started()) reason_ = "xdotool is not installed";
  if (!reason_.empty()) return;
  display_ = ":" + screen_->firstLine();
  busAddress_ = bus_->firstLine();
  EXPECT_NE(display_, ":");
  EXPECT_NE(busAddress_, "");
}

BackgroundProgram::Environment Desktop::environment() const {
  return {{"LC_ALL", "C.UTF-8"},  // else xdotool does not find the titles of windows
          {"DISPLAY", display_},
          {"WAYLAND_DISPLAY", std::nullopt},
          {"DBUS_SESSION_BUS_ADDRESS", busAddress_},
          {"XDG_CURRENT_DESKTOP", std::nullopt},
          {"QT_QPA_PLATFORM", std::nullopt},
          {"QT_QPA_PLATFORMTHEME", std::nullopt}};
}

std::unique_ptr<BackgroundProgram> Desktop::startProgram(BackgroundProgram::Environment changes,
                                                         std::vector<std::string> arguments) const {
  changes.merge(environment());
  arguments.insert(arguments.begin(), program_);
  return std::make_unique<BackgroundProgram>(arguments, changes);
}

void Desktop::press(std::vector<std::string> keys) const {
  std::vector<std::string> command{"xdotool", "key", "--delay", "50"};
  command.insert(command.end(), keys.begin(), keys.end());
  EXPECT_EQ(runProgram(command, environment()), 0);
}

void Desktop::pointAt(int x, int y) const {
  EXPECT_EQ(
      runProgram({"xdotool", "mousemove", std::to_string(x), std::to_string(y)}, environment()), 0);
}

bool Desktop::showsWindows(int count, const std::string& title) const {
  return runProgram({"xdotool", "search", "--onlyvisible", "--name", "^" + title + "$",
                     "getwindowgeometry", "%" + std::to_string(count)},
                    environment()) == 0;
}

bool Desktop::eventuallyShowsWindows(int count, const std::string& title) const {
  return eventually([&] { return showsWindows(count, title); }, std::chrono::milliseconds(20));
}

void Desktop::clickInto(const std::string& title) const {
  EXPECT_EQ(runProgram({"xdotool", "search", "--onlyvisible", "--name", "^" + title + "$",
                        "mousemove", "--window", "%1", "20", "20", "click", "1"},
                       environment()),
            0);
}

void Desktop::killScreen() {
  screen_->signal(SIGKILL);
}

void Desktop::killBus() {
  bus_->signal(SIGKILL);
}
