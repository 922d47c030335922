#import <Foundation/Foundation.h>
#include <dispatch/dispatch.h>

#include <cstdint>
#include <functional>
#include <memory>
#include <utility>

#include "frontends/appkit/scheduled_work.h"

namespace {

class MainQueueWork : public ScheduledWork {
 public:
  explicit MainQueueWork(std::function<void()> work) : work_(std::move(work)) {}

  void cancel() override { work_ = nullptr; }

  /// Gives up its own reference to the work before running it, because the work may cancel itself.
  void run() {
    if (const auto work = std::exchange(work_, nullptr)) work();
  }

 private:
  std::function<void()> work_;
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
