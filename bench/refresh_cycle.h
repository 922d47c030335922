#pragma once

#include <functional>
#include <memory>
#include <utility>

#include "ui/front_end.h"
#include "ui/status_bar_controller.h"

namespace bench {

/// The program's refresh cycle without a screen: the same controller that every front end
/// drives, its timer wound by hand.
class RefreshCycle {
 public:
  RefreshCycle() : controller_(frontEnd_, Alert{}) {}

  /// One tick of the timer: scan, agents, menu and strip.
  void tick() { frontEnd_.timer(); }

 private:
  struct NoWork : ScheduledWork {
    void cancel() override {}
  };

  struct BlindFrontEnd : FrontEnd {
    std::function<void()> timer;

    void setTitle(const std::string&) override {}
    void setToolTip(const std::string&) override {}
    void menuRebuilt(const Menu&) override {}
    void stripChanged(const MemoryPressureView&) override {}
    void cancelTracking() override {}
    int runModal(const Alert&) override { return kAlertDismissed; }
    std::shared_ptr<ScheduledWork> every(double, std::function<void()> work) override {
      timer = std::move(work);
      return std::make_shared<NoWork>();
    }
    std::shared_ptr<ScheduledWork> after(double, std::function<void()>) override {
      return std::make_shared<NoWork>();
    }
    void terminate() override {}
  };

  BlindFrontEnd frontEnd_;
  StatusBarController controller_;
};

}  // namespace bench
