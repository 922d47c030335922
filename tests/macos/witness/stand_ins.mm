#include "macos/witness/stand_ins.h"

#include <map>
#include <utility>

namespace {

/// View and label of each item; kept until the test program ends.
std::map<NSMenuItem*, std::pair<NSView*, NSString*>> extras;

}  // namespace

@implementation NSMenu (StandIn)

- (void)removeAllItems {
  while ([self numberOfItems] > 0) [self removeItemAtIndex:0];
}

@end

@implementation NSMenuItem (StandIn)

- (NSView*)view {
  return extras[self].first;
}

- (void)setView:(NSView*)view {
  extras[self].first = [view retain];
}

- (NSString*)accessibilityLabel {
  return extras[self].second;
}

- (void)setAccessibilityLabel:(NSString*)label {
  extras[self].second = [label copy];
}

@end

@implementation NSWorkspace (StandIn)

- (BOOL)accessibilityDisplayShouldIncreaseContrast {
  return NO;
}

@end

@implementation NSColor (StandIn)

+ (NSColor*)labelColor {
  return [NSColor controlTextColor];
}

@end
