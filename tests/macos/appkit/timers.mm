#include <objc/runtime.h>

#include "macos/appkit/registry.h"
#include "macos/appkit/user.h"

namespace {

using AddTimer = void (*)(id, SEL, NSTimer*, NSString*);

AddTimer original = nullptr;

/// Notes the timer, and lets the run loop have it.
void addTimer(NSRunLoop* self, SEL selector, NSTimer* timer, NSString* mode) {
  original(self, selector, timer, mode);
  appkit::record().timers.push_back({.timer = [timer retain],
                                     .interval = [timer timeInterval],
                                     .repeats = [timer timeInterval] > 0,
                                     .mode = [mode UTF8String],
                                     .onMainRunLoop = self == [NSRunLoop mainRunLoop]});
}

}  // namespace

namespace appkit {

void watchTimers() {
  if (original != nullptr) return;
  const Method method = class_getInstanceMethod([NSRunLoop class], @selector(addTimer:forMode:));
  original =
      reinterpret_cast<AddTimer>(method_setImplementation(method, reinterpret_cast<IMP>(addTimer)));
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
  record().menuFades = false;
  fireThose([](const AddedTimer& timer) {
    return !timer.repeats && timer.mode == [NSDefaultRunLoopMode UTF8String];
  });
}

void fireTimers() {
  fireThose([](const AddedTimer& timer) { return timer.repeats; });
}

void forgetTimers() {
  for (const AddedTimer& added : record().timers) {
    NSTimer* timer = static_cast<NSTimer*>(added.timer);
    [timer invalidate];
    [timer release];
  }
  record().timers.clear();
}

}  // namespace appkit
