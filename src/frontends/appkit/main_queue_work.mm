#import <Foundation/Foundation.h>
#include <dispatch/dispatch.h>

#include <cstdint>
#include <functional>
#include <memory>
#include <utility>

#include "frontends/appkit/scheduled_work.h"

namespace {

/// While it lives, macOS does not nap the program, so that timers hold their times. The machine
/// itself may sleep.
class Activity {
 public:
  Activity()
      : token_([[[NSProcessInfo processInfo]
            beginActivityWithOptions:NSActivityUserInitiatedAllowingIdleSystemSleep
                              reason:@"Looks again after the user ended a process"] retain]) {}
  ~Activity() {
    [[NSProcessInfo processInfo] endActivity:token_];
    [token_ release];
  }
  Activity(const Activity&) = delete;
  Activity& operator=(const Activity&) = delete;

 private:
  id token_;
};

class MainQueueWork : public ScheduledWork {
 public:
  explicit MainQueueWork(std::function<void()> work)
      : work_(std::move(work)), activity_(std::make_unique<Activity>()) {}

  void cancel() override {
    work_ = nullptr;
    activity_.reset();
  }

  /// Gives up its own reference to the work before running it, because the work may cancel itself.
  void run() {
    if (const auto work = std::exchange(work_, nullptr)) work();
    activity_.reset();
  }

 private:
  std::function<void()> work_;
  std::unique_ptr<Activity> activity_;
};

using SharedWork = std::shared_ptr<MainQueueWork>;

void runHandle(void* context) {
  @autoreleasepool {
    const std::unique_ptr<SharedWork> handle(static_cast<SharedWork*>(context));
    (*handle)->run();
  }
}

}  // namespace

std::shared_ptr<ScheduledWork> runOnMainQueue(double seconds, std::function<void()> work) {
  auto handle = std::make_unique<SharedWork>(std::make_shared<MainQueueWork>(std::move(work)));
  const SharedWork result = *handle;
  const auto delay = static_cast<std::int64_t>(seconds * static_cast<double>(NSEC_PER_SEC));
  dispatch_after_f(dispatch_time(DISPATCH_TIME_NOW, delay), dispatch_get_main_queue(),
                   handle.release(), runHandle);
  return result;
}
