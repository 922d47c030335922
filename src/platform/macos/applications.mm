#include "platform/applications.h"

#import <AppKit/AppKit.h>

#include "platform/macos/foundation_text.h"
#include "platform/macos/places.h"

namespace platform {
namespace {

void open(NSString* path) {
  [[NSWorkspace sharedWorkspace] openURL:[NSURL fileURLWithPath:path]];
}

}  // namespace

void openSystemMonitor() {
  @autoreleasepool {
    open(nsString(Places::kActivityMonitor));
  }
}

void openDockerDesktop() {
  @autoreleasepool {
    NSString* path = nsString(Places::kDockerDesktop);
    if ([[NSFileManager defaultManager] fileExistsAtPath:path]) open(path);
  }
}

}  // namespace platform
