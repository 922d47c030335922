#pragma once

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "tools/background_program.h"
#include "tools/temp_folder.h"

/// A screen and a message bus of the test's own, on which the program is started as a user
/// would start it. Nothing of it is left at the end of its scope.
class Desktop {
 public:
  Desktop();

  /// Why there is none; "" when there is one.
  const std::string& reason() const { return reason_; }

  const std::string& display() const { return display_; }
  const std::string& busAddress() const { return busAddress_; }
  /// Lets the program find another bus, or one that isn't there.
  void setBusAddress(std::string address) { busAddress_ = std::move(address); }

  /// Starts another program in the program's place from now on.
  void setProgram(std::string path) { program_ = std::move(path); }

  /// Starts the program, in this desktop's environment with these changes.
  std::unique_ptr<BackgroundProgram> startProgram(BackgroundProgram::Environment changes = {},
                                                  std::vector<std::string> arguments = {}) const;

  /// Presses keys, named as xdotool names them.
  void press(std::vector<std::string> keys) const;

  /// Moves the pointer there on the screen.
  void pointAt(int x, int y) const;

  /// Clicks into the window with that title, near its top left corner.
  void clickInto(const std::string& title) const;

  /// Whether a window with that title is on the screen.
  bool showsWindow(const std::string& title) const { return showsWindows(1, title); }
  /// Waits for it without answering anything else meanwhile; false after a minute.
  bool eventuallyShowsWindow(const std::string& title) const {
    return eventuallyShowsWindows(1, title);
  }
  /// The same for so many windows of one title.
  bool showsWindows(int count, const std::string& title) const;
  bool eventuallyShowsWindows(int count, const std::string& title) const;

  void killScreen();
  void killBus();

 private:
  BackgroundProgram::Environment environment() const;

  TempFolder folder_;
  std::string program_ = VORDA_TRAY_PROGRAM;
  std::unique_ptr<BackgroundProgram> screen_;
  std::unique_ptr<BackgroundProgram> bus_;
  std::string display_;
  std::string busAddress_;
  std::string reason_;
};
