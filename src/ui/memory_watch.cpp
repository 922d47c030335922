// The part of the controller that watches over the memory.
#include "platform/processes.h"
#include "ui/status_bar_controller.h"

namespace {

double secondsNow() {
  constexpr double kNanoseconds = 1e9;
  return static_cast<double>(platform::processClock()) / kNanoseconds;
}

}  // namespace

/// Right after a sample was taken.
void StatusBarController::watchMemory() {
  if (!sys_.availableGB) return;
  const double now = secondsNow();
  lookAtMemory(now);
  if (const auto found = memoryWarningRule_.sampled(now, processes_, menuIsOpen_)) {
    memoryWarning_ = memoryWarning(*found, sys_);
    frontEnd_.setWarning(memoryWarning_);
  } else if (memoryWarning_ && memoryWarningRule_.isOver(now)) {
    memoryWarning_.reset();
    frontEnd_.setWarning(std::nullopt);
  }
  lookAgainInTime();
}

void StatusBarController::lookAtMemory(double now) {
  memoryWarningRule_.look({now, *sys_.availableGB, sys_.totalGB, sys_.stalls});
}

/// Between two refreshes it looks at the memory alone, which costs next to nothing, and only while
/// that is going fast.
void StatusBarController::lookAgainInTime() {
  if (memoryLook_) memoryLook_->cancel();
  memoryLook_.reset();
  if (memoryWarningRule_.nextLook() >= waits_.refresh) return;
  memoryLook_ = frontEnd_.after(memoryWarningRule_.nextLook(), [weakSelf = std::weak_ptr(self_)] {
    const auto self = weakSelf.lock();
    if (!self) return;
    StatusBarController& controller = **self;
    controller.sys_ = SystemMemory::snapshot();
    if (!controller.sys_.availableGB) return;
    controller.lookAtMemory(secondsNow());
    if (controller.memoryWarningRule_.trouble()) {
      controller.refresh();  // to see who it is
    } else {
      controller.lookAgainInTime();
    }
  });
}
