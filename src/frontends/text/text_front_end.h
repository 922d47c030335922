#pragma once

#include <cstdio>
#include <string_view>

#include "frontends/text/menu_text.h"
#include "ui/front_end.h"
#include "ui/waiting_times.h"

/// A front end for what is printed: it shows nothing by itself, and has no run loop. Scheduled work
/// never runs, alerts are dismissed unseen.
class TextFrontEnd : public FrontEnd {
 public:
  void setTitle(const std::string&) override {}
  void setToolTip(const std::string&) override {}
  void menuRebuilt(std::shared_ptr<const Menu>) override {}
  void stripChanged(const MemoryPressureView&) override {}
  void setNotice(const std::string&) override {}
  void setWarning(const std::optional<MemoryWarning>&) override {}
  void cancelTracking() override {}
  int runModal(const Alert&) override { return kAlertDismissed; }
  std::shared_ptr<ScheduledWork> every(double seconds, std::function<void()> work) override;
  std::shared_ptr<ScheduledWork> after(double seconds, std::function<void()> work) override;
  void terminate() override {}
};

// Each takes a sample of the machine, prints it and returns the program's exit status: 0, or 1 when
// it can't be written (a full disk, a reader that is gone, a closed output), which is told on
// standard error in one line.

/// The menu as plain text.
[[nodiscard]] int runText(CharacterSet characters, std::FILE* out);

/// The sample as JSON (machine_json.h), with the program's version.
[[nodiscard]] int runJson(std::string_view version, std::FILE* out);

/// A line for a status bar (bar_json.h).
[[nodiscard]] int runBar(std::FILE* out);

/// Such a line every `seconds`, until nobody reads them any more: that is its ordinary end.
[[nodiscard]] int watchBar(std::FILE* out, double seconds = WaitingTimes::kRefreshInterval);
