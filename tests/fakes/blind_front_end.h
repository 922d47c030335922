#pragma once

#include <functional>
#include <memory>
#include <string>
#include <utility>

#include "ui/front_end.h"

/// A front end that shows nothing, with a timer that is run by hand. It dismisses every alert and
/// never runs delayed work. It needs no test framework, so that benchmarks can use it.
class BlindFrontEnd : public FrontEnd {
 public:
  /// Runs the repeated work once, as if its time had come. There must be such work.
  void runTimer() { timer_(); }

  void setTitle(const std::string&) override {}
  void setToolTip(const std::string&) override {}
  void menuRebuilt(std::shared_ptr<const Menu>) override {}
  void stripChanged(const MemoryPressureView&) override {}
  void setNotice(const std::string&) override {}
  void setWarning(const std::optional<MemoryWarning>&) override {}
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
