#include <objc/runtime.h>

#include <map>

#include "macos/appkit/registry.h"
#include "macos/appkit/user.h"

namespace {

using AddTimer = void(NSRunLoop*, SEL, NSTimer*, NSString*);

AddTimer* original = nullptr;

std::map<NSTimer*, NSTimeInterval> tolerances;

/// Notes the timer, and lets the run loop have it.
void addTimer(NSRunLoop* self, SEL selector, NSTimer* timer, NSString* mode) {
  original(self, selector, timer, mode);
  appkit::record().timers.push_back({.timer = [timer retain],
                                     .interval = [timer timeInterval],
                                     .tolerance = [timer tolerance],
                                     .repeats = [timer timeInterval] > 0,
                                     .mode = [mode UTF8String],
                                     .onMainRunLoop = self == [NSRunLoop mainRunLoop]});
}

}  // namespace

@implementation NSTimer (Apple)

- (NSTimeInterval)tolerance {
  return tolerances[self];
}

- (void)setTolerance:(NSTimeInterval)tolerance {
  tolerances[self] = tolerance;
}

@end

/// What keeps the program from being napped, until it is given back.
@interface Activity : NSObject
@end

@implementation Activity
@end

namespace {

id beginActivity(id, SEL, NSActivityOptions options, NSString* reason) {
  if ([reason length] == 0) [NSException raise:NSInvalidArgumentException format:@"no reason"];
  if (options == NSActivityUserInitiatedAllowingIdleSystemSleep) ++appkit::record().activities;
  return [[[Activity alloc] init] autorelease];
}

void endActivity(id, SEL, id activity) {
  if ([activity isKindOfClass:[Activity class]]) --appkit::record().activities;
}

template <typename Function>
Function replaceMethod(Class owner, SEL selector, Function function) {
  return reinterpret_cast<Function>(method_setImplementation(
      class_getInstanceMethod(owner, selector), reinterpret_cast<IMP>(function)));
}

}  // namespace

namespace appkit {

void watchTimers() {
  if (original != nullptr) return;
  original = replaceMethod([NSRunLoop class], @selector(addTimer:forMode:), addTimer);
  replaceMethod([NSProcessInfo class], @selector(beginActivityWithOptions:reason:), beginActivity);
  replaceMethod([NSProcessInfo class], @selector(endActivity:), endActivity);
}

namespace {

/// Fires those of the timers now known that are still valid, and of which this holds.
template <typename Predicate>
void fireThose(Predicate isMeant) {
  for (const AddedTimer& added : std::vector(record().timers)) {
    NSTimer* timer = static_cast<NSTimer*>(added.timer);
    if ([timer isValid] && isMeant(added)) [timer fire];
  }
}

}  // namespace

void turnRunLoop() {
  if (record().menusOpen > 0 || record().alertsOpen > 0) return;
  record().menuFades = false;
  fireThose([](const AddedTimer& timer) {
    return !timer.repeats && timer.mode == [NSDefaultRunLoopMode UTF8String];
  });
}

void fireTimers() {
  const bool isDefaultMode = record().menusOpen == 0 && record().alertsOpen == 0;
  fireThose([isDefaultMode](const AddedTimer& timer) {
    return timer.repeats && (isDefaultMode || timer.mode == [NSRunLoopCommonModes UTF8String]);
  });
}

void forgetTimers() {
  for (const AddedTimer& added : record().timers) {
    NSTimer* timer = static_cast<NSTimer*>(added.timer);
    [timer invalidate];
    tolerances.erase(timer);
    [timer release];
  }
  record().timers.clear();
}

}  // namespace appkit
