#include "macos/appkit/registry.h"

@implementation NSResponder
@end

@implementation NSView

@synthesize frame = frame_;
@synthesize autoresizingMask = autoresizingMask_;
@synthesize needsDisplay = needsDisplay_;
@synthesize translatesAutoresizingMaskIntoConstraints = translatesAutoresizingMaskIntoConstraints_;
@synthesize toolTip = toolTip_;
@synthesize accessibilityLabel = accessibilityLabel_;

- (instancetype)init {
  return [self initWithFrame:NSZeroRect];
}

- (instancetype)initWithFrame:(NSRect)frameRect {
  self = [super init];
  if (self != nil) {
    frame_ = frameRect;
    translatesAutoresizingMaskIntoConstraints_ = YES;
    ++appkit::record().views;
  }
  return self;
}

- (void)dealloc {
  --appkit::record().views;
  [toolTip_ release];
  [accessibilityLabel_ release];
  [super dealloc];
}

- (NSRect)bounds {
  return NSMakeRect(0, 0, frame_.size.width, frame_.size.height);
}

- (void)setBounds:(NSRect)bounds {
  frame_.size = bounds.size;
}

- (NSSize)intrinsicContentSize {
  return NSMakeSize(-1, -1);
}

- (BOOL)isFlipped {
  return NO;
}

- (void)drawRect:(NSRect)dirtyRect {
  appkit::record().drawing.push_back("super");
}

@end

@implementation NSControl

@synthesize stringValue = stringValue_;
@synthesize font = font_;

- (void)dealloc {
  [stringValue_ release];
  [font_ release];
  [super dealloc];
}

@end

@implementation NSTextField

@synthesize textColor = textColor_;
@synthesize preferredMaxLayoutWidth = preferredMaxLayoutWidth_;

+ (instancetype)wrappingLabelWithString:(NSString*)stringValue {
  NSTextField* field = [[[NSTextField alloc] init] autorelease];
  [field setStringValue:stringValue];
  return field;
}

- (void)dealloc {
  [textColor_ release];
  [super dealloc];
}

@end

@implementation NSButton

@synthesize title = title_;
@synthesize image = image_;

- (void)dealloc {
  [title_ release];
  [image_ release];
  [super dealloc];
}

@end

@implementation NSStatusBarButton
@end

@implementation NSStackView

@synthesize orientation = orientation_;
@synthesize alignment = alignment_;
@synthesize edgeInsets = edgeInsets_;
@synthesize spacing = spacing_;

+ (instancetype)stackViewWithViews:(NSArray*)views {
  NSStackView* stack = [[[NSStackView alloc] init] autorelease];
  [stack setTranslatesAutoresizingMaskIntoConstraints:NO];
  for (NSView* view in views) [stack addView:view inGravity:NSStackViewGravityTop];
  return stack;
}

- (instancetype)initWithFrame:(NSRect)frameRect {
  self = [super initWithFrame:frameRect];
  if (self != nil) {
    spacing_ = 8;
    views_ = [[NSMutableArray alloc] init];
    customSpacings_ = [[NSMutableDictionary alloc] init];
  }
  return self;
}

- (void)dealloc {
  [views_ release];
  [customSpacings_ release];
  [super dealloc];
}

- (NSArray*)views {
  return [[views_ copy] autorelease];
}

- (void)addView:(NSView*)view inGravity:(NSStackViewGravity)gravity {
  if (gravity == NSStackViewGravityTop) [views_ addObject:view];
}

- (NSArray*)viewsInGravity:(NSStackViewGravity)gravity {
  return gravity == NSStackViewGravityTop ? [self views] : [NSArray array];
}

- (void)setCustomSpacing:(CGFloat)spacing afterView:(NSView*)view {
  [customSpacings_ setObject:[NSNumber numberWithDouble:spacing]
                      forKey:[NSValue valueWithPointer:view]];
}

- (CGFloat)customSpacingAfterView:(NSView*)view {
  NSNumber* spacing = [customSpacings_ objectForKey:[NSValue valueWithPointer:view]];
  return spacing == nil ? spacing_ : [spacing doubleValue];
}

@end
