#pragma once

#include "fakes/blind_front_end.h"
#include "ui/status_bar_controller.h"

namespace bench {

/// The program's refresh cycle without a screen: the same controller that every front end
/// drives, its timer wound by hand.
class RefreshCycle {
 public:
  RefreshCycle() : controller_(frontEnd_, Alert{}) {}

  /// One tick of the timer: scan, launch agents, menu and strip.
  void tick() { frontEnd_.runTimer(); }

 private:
  BlindFrontEnd frontEnd_;
  StatusBarController controller_;
};

}  // namespace bench
