#include "macos/appkit_double.h"

#import <AppKit/AppKit.h>

namespace appkit {

Record& record() {
  static Record theRecord;
  return theRecord;
}

void reset() {
  record() = {};
}

}  // namespace appkit

@implementation NSWorkspace

+ (NSWorkspace*)sharedWorkspace {
  static NSWorkspace* shared = [[NSWorkspace alloc] init];
  return shared;
}

- (BOOL)openURL:(NSURL*)url {
  appkit::record().openedUrls.push_back([[url absoluteString] UTF8String]);
  return YES;
}

@end
