#include "macos/foundation_double.h"

#import <Foundation/Foundation.h>
#include <objc/runtime.h>

#include "macos/stage.h"

// A function of the library, to which the linker leads (--wrap) when the edition calls it.
extern "C" NSString* __wrap_NSHomeDirectory() {
  return [NSString stringWithUTF8String:Stage::homePath().c_str()];
}

namespace {

id stageBundle(id, SEL) {
  return [NSBundle bundleWithPath:[NSString stringWithUTF8String:Stage::bundlePath().c_str()]];
}

}  // namespace

void foundation::useStage() {
  static const IMP standard =
      method_setImplementation(class_getClassMethod([NSBundle class], @selector(mainBundle)),
                               reinterpret_cast<IMP>(stageBundle));
  static_cast<void>(standard);
}
