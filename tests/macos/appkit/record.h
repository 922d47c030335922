#pragma once

#include <deque>
#include <functional>
#include <optional>
#include <string>
#include <vector>

/// What the edition under test asked of AppKit, and how AppKit is to answer.
namespace appkit {

struct ShownAlert {
  std::string messageText;
  std::string informativeText;
  std::optional<int> style;  ///< NSAlertStyle; none when it was left as it is
  std::string icon;          ///< the file of its icon; "" for the standard one
  double iconSide = 0;       ///< in points; -1 when it is not square
  std::vector<std::string> buttons;
  bool programWasInFront = false;
  bool menuFaded = false;  ///< it opened before the menu was gone from the screen
};

struct AddedTimer {
  void* timer = nullptr;  ///< an NSTimer, which the run loop keeps
  double interval = 0;
  double tolerance = 0;
  bool repeats = false;
  std::string mode;
  bool onMainRunLoop = false;
};

struct Record {
  // How AppKit answers.
  bool buttonless = false;            ///< status items have no button
  bool withoutApplication = false;    ///< there is no application object
  bool increasesContrast = false;     ///< the user's wish
  bool refusesActivation = false;     ///< as since macOS 14: programs don't come to the front
  std::function<void()> duringAlert;  ///< runs once, while the next alert is open
  std::deque<int> answers;            ///< of alerts; none left: what the only or first button gives
  std::function<void()> whileRunning;  ///< runs once the application has launched

  // What it was asked.
  std::vector<ShownAlert> alerts;
  std::vector<std::string> openedUrls;
  std::vector<std::string> drawing;  ///< as RecordingCanvas writes it down
  std::vector<AddedTimer> timers;
  std::optional<int> activationPolicy;    ///< NSApplicationActivationPolicy; none: as it was
  std::optional<int> policyAtStatusItem;  ///< what it was when a status item came
  int trackingsCancelled = 0;
  int activations = 0;
  int terminations = 0;
  int usesOfGoneStatusItem = 0;  ///< of one that nobody has kept
  bool windowIsInFront = false;  ///< the one on screen is before those of other programs
  int savedGraphicsStates = 0;   ///< that were not restored
  int menusOpen = 0;
  int alertsOpen = 0;
  bool menuFades = false;  ///< a choice was made, and the run loop has not turned since

  // What is alive.
  int activities = 0;   ///< that keep the program from being napped
  int statusItems = 0;  ///< in the status bar
  int views = 0;
  int menuItems = 0;
};

Record& record();

/// Runs what waits on the main queue, and forgets all that was recorded.
void reset();

/// Winds the main queue's clock on, and runs what is due.
void advanceMainQueue(double seconds);
std::size_t waitingOnMainQueue();

}  // namespace appkit
