#pragma once

#include <functional>
#include <memory>
#include <string>
#include <utility>

#include "ui/front_end.h"

/// A front end that shows nothing, and a timer that is wound by hand. It dismisses every alert,
/// and does no work that waits. Whoever times the program or leads it from outside includes
/// this: it takes no test framework.
class BlindFrontEnd : public FrontEnd {
 public:
  /// Does the work that was to be done regularly, as if its time had come. There has to be some.
  void runTimer() { timer_(); }

  void setTitle(const std::string&) override {}
  void setToolTip(const std::string&) override {}
  void menuRebuilt(std::shared_ptr<const Menu>) override {}
  void stripChanged(const MemoryPressureView&) override {}
  void setNotice(const std::string&) override {}
  void cancelTracking() override {}
  int runModal(const Alert&) override { return kAlertDismissed; }
  std::shared_ptr<ScheduledWork> every(double, std::function<void()> work) override {
    timer_ = std::move(work);
    return std::make_shared<NoWork>();
  }
  std::shared_ptr<ScheduledWork> after(double, std::function<void()>) override {
    return std::make_shared<NoWork>();
  }
  void terminate() override {}

 private:
  struct NoWork : ScheduledWork {
    void cancel() override {}
  };

  std::function<void()> timer_;
};
