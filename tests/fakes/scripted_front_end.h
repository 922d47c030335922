#pragma once

#include <deque>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "ui/front_end.h"

/// A front end without a screen, whose clock the test moves. It remembers everything that it was
/// given to show.
class ScriptedFrontEnd : public FrontEnd {
 public:
  std::string title;
  std::string toolTip;
  int menusBuilt = 0;
  int stripChanges = 0;
  int titleChanges = 0;
  int alertChanges = 0;
  int trackingsCancelled = 0;
  int terminations = 0;
  std::vector<std::string> notices;  ///< every notice set, in order
  /// Every warning set and taken back, in order.
  std::vector<std::optional<MemoryWarning>> warnings;
  std::vector<Alert> alerts;  ///< every alert shown, in order, as it was at last
  std::deque<int> answers;    ///< one is taken for each alert; when none is left, the first button
  /// Runs while an alert is open: a test can change the machine meanwhile.
  std::function<void(const Alert&)> whileAlertIsOpen;
  /// Runs when the menu is told to close.
  std::function<void()> whenTrackingIsCancelled;

  /// Moves the clock on and runs what is due, in the order of its time.
  void advance(double seconds);
  /// How many pieces of work are waiting.
  std::size_t pendingWork() const;

  void setTitle(const std::string& text) override { title = text; }
  void setToolTip(const std::string& text) override { toolTip = text; }
  void menuRebuilt(std::shared_ptr<const Menu>) override { ++menusBuilt; }
  void stripChanged(const MemoryPressureView&) override { ++stripChanges; }
  void titlesChanged() override { ++titleChanges; }
  void alertChanged(const Alert& alert) override;
  void setNotice(const std::string& text) override { notices.push_back(text); }
  void setWarning(const std::optional<MemoryWarning>& warning) override {
    warnings.push_back(warning);
  }
  void cancelTracking() override;
  int runModal(const Alert& alert) override;
  std::shared_ptr<ScheduledWork> every(double seconds, std::function<void()> work) override;
  std::shared_ptr<ScheduledWork> after(double seconds, std::function<void()> work) override;
  void terminate() override { ++terminations; }

 private:
  struct Work;
  double now_ = 0;
  std::vector<std::shared_ptr<Work>> work_;
};
