#include "macos/witness/stand_ins.h"

#include <map>
#include <utility>

namespace {

/// View and label of each item; kept until the test program ends.
std::map<NSMenuItem*, std::pair<NSView*, NSString*>> extras;

}  // namespace

@implementation NSApplication (StandIn)

- (BOOL)setActivationPolicy:(NSApplicationActivationPolicy)policy {
  return YES;
}

@end

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

+ (NSColor*)tertiaryLabelColor {
  return [NSColor disabledControlTextColor];
}

@end

@implementation NSFont (StandIn)

+ (NSFont*)preferredFontForTextStyle:(NSFontTextStyle)style options:(NSDictionary*)options {
  const CGFloat size = [NSFont systemFontSize];
  if ([style isEqual:NSFontTextStyleTitle2]) return [NSFont systemFontOfSize:1.5 * size];
  return [NSFont systemFontOfSize:[style isEqual:NSFontTextStyleBody] ? size : 0.8 * size];
}

@end

@implementation NSTextField (StandIn)

+ (NSTextField*)wrappingLabelWithString:(NSString*)string {
  NSTextField* label = [[[NSTextField alloc] init] autorelease];
  [label setStringValue:string];
  [label setEditable:NO];
  [label setBezeled:NO];
  [label setDrawsBackground:NO];
  [[label cell] setWraps:YES];
  return label;
}

- (void)setPreferredMaxLayoutWidth:(CGFloat)width {
  const NSSize size = [[self cell] cellSizeForBounds:NSMakeRect(0, 0, width, 1000)];
  [self setFrameSize:NSMakeSize(width, size.height)];
}

@end

@implementation NSView (StandIn)

- (void)setTranslatesAutoresizingMaskIntoConstraints:(BOOL)flag {
}

@end

@implementation NSStackView

@synthesize edgeInsets = edgeInsets_;
@synthesize spacing = spacing_;

+ (instancetype)stackViewWithViews:(NSArray*)views {
  return [[[NSStackView alloc] initWithFrame:NSZeroRect] autorelease];
}

- (instancetype)initWithFrame:(NSRect)frame {
  self = [super initWithFrame:frame];
  if (self != nil) customSpacings_ = [[NSMutableDictionary alloc] init];
  return self;
}

- (void)dealloc {
  [customSpacings_ release];
  [super dealloc];
}

- (NSUserInterfaceLayoutOrientation)orientation {
  return NSUserInterfaceLayoutOrientationVertical;
}

- (void)setOrientation:(NSUserInterfaceLayoutOrientation)orientation {
}

- (NSLayoutAttribute)alignment {
  return NSLayoutAttributeLeading;
}

- (void)setAlignment:(NSLayoutAttribute)alignment {
}

- (void)addView:(NSView*)view inGravity:(NSStackViewGravity)gravity {
  [self addSubview:view];
}

- (void)setCustomSpacing:(CGFloat)spacing afterView:(NSView*)view {
  [customSpacings_ setObject:[NSNumber numberWithDouble:spacing]
                      forKey:[NSValue valueWithPointer:view]];
}

- (void)setFrame:(NSRect)frame {
  [super setFrame:frame];
  CGFloat top = frame.size.height - edgeInsets_.top;
  for (NSView* view in [self subviews]) {
    [view setFrameOrigin:NSMakePoint(edgeInsets_.left, top - [view frame].size.height)];
    NSNumber* custom = [customSpacings_ objectForKey:[NSValue valueWithPointer:view]];
    top = NSMinY([view frame]) - (custom == nil ? spacing_ : [custom doubleValue]);
  }
}

@end
