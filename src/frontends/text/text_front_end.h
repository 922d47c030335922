#pragma once

#include <cstdio>

#include "ui/front_end.h"

/// A front end for pipes and logs: it prints the menu once and is done. It has no run loop:
/// scheduled work never runs, alerts are dismissed unseen.
class TextFrontEnd : public FrontEnd {
 public:
  /// Prints the menu and says what the program's exit status should be: 0, or 1 when it
  /// can't be written (a full disk, a reader that is gone, a closed output), which is told
  /// on standard error in one line. A reader that is gone does not end the process by
  /// SIGPIPE while this prints.
  [[nodiscard]] int print(const Menu& menu, std::FILE* out);

  void setTitle(const std::string&) override {}
  void setToolTip(const std::string&) override {}
  void menuRebuilt(std::shared_ptr<const Menu>) override {}
  void stripChanged(const MemoryPressureView&) override {}
  void setNotice(const std::string&) override {}
  void cancelTracking() override {}
  int runModal(const Alert&) override { return kAlertDismissed; }
  std::shared_ptr<ScheduledWork> every(double seconds, std::function<void()> work) override;
  std::shared_ptr<ScheduledWork> after(double seconds, std::function<void()> work) override;
  void terminate() override {}
};

/// Takes one sample of the machine and prints its menu, as TextFrontEnd::print does; returns
/// the program's exit status.
[[nodiscard]] int runText(std::FILE* out);
