#pragma once

#include <string>

struct xcb_connection_t;

/// A window manager at the moment of its start: it has taken the screen, and loses what a
/// window asks for. Once it is gone nobody manages windows.
class StartingWindowManager {
 public:
  explicit StartingWindowManager(const std::string& display);
  ~StartingWindowManager();
  StartingWindowManager(const StartingWindowManager&) = delete;
  StartingWindowManager& operator=(const StartingWindowManager&) = delete;

  /// Waits until a window has asked to be shown, and forgets it.
  bool losesAWindow();

 private:
  xcb_connection_t* connection_;
};
