#import <Foundation/Foundation.h>

#include <utility>

#include "frontends/appkit/scheduled_work.h"

/// The target of a timer, which runs the work.
@interface VordaTimerTarget : NSObject {
 @private
  const std::function<void()>* work_;
}
- (instancetype)initWithWork:(std::function<void()>)work;
- (void)fire:(NSTimer*)timer;
@end

@implementation VordaTimerTarget

- (instancetype)initWithWork:(std::function<void()>)work {
  self = [super init];
  if (self != nil) work_ = new std::function<void()>(std::move(work));
  return self;
}

- (void)dealloc {
  delete work_;
  [super dealloc];
}

- (void)fire:(NSTimer*)timer {
  @autoreleasepool {
    (*work_)();
  }
}

@end

namespace {

/// The run loop keeps the timer, and the timer its target, until the timer is invalidated.
class RunLoopWork : public ScheduledWork {
 public:
  explicit RunLoopWork(NSTimer* timer) : timer_([timer retain]) {}
  ~RunLoopWork() override { [timer_ release]; }
  RunLoopWork(const RunLoopWork&) = delete;
  RunLoopWork& operator=(const RunLoopWork&) = delete;

  void cancel() override { [timer_ invalidate]; }

 private:
  NSTimer* timer_;
};

}  // namespace

std::shared_ptr<ScheduledWork> repeatOnMainRunLoop(double seconds, std::function<void()> work) {
  VordaTimerTarget* target = [[[VordaTimerTarget alloc] initWithWork:std::move(work)] autorelease];
  NSTimer* timer = [NSTimer timerWithTimeInterval:seconds
                                           target:target
                                         selector:@selector(fire:)
                                         userInfo:nil
                                          repeats:YES];
  constexpr double kTolerance = 0.1;  // of the time: so macOS can fire it with other timers
  [timer setTolerance:kTolerance * seconds];
  [[NSRunLoop mainRunLoop] addTimer:timer forMode:NSRunLoopCommonModes];
  return std::make_shared<RunLoopWork>(timer);
}
