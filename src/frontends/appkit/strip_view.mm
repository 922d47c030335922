#include "frontends/appkit/strip_view.h"

#include "frontends/appkit/app_kit_canvas.h"
#include "platform/macos/foundation_text.h"
#include "ui/strip_text.h"

namespace {

constexpr NSRect kFrame = {{0, 0},
                           {MemoryPressureView::kItemWidth, MemoryPressureView::kItemHeight}};

}  // namespace

@implementation VordaStripView

- (instancetype)initWithStrip:(const std::shared_ptr<MemoryPressureView>&)strip {
  self = [super initWithFrame:kFrame];
  if (self != nil) {
    strip_ = new std::shared_ptr<MemoryPressureView>(strip);
    [self setAutoresizingMask:NSViewWidthSizable];
  }
  return self;
}

- (void)dealloc {
  delete strip_;
  [super dealloc];
}

- (NSSize)intrinsicContentSize {
  return NSMakeSize(MemoryPressureView::kIntrinsicWidth, MemoryPressureView::kIntrinsicHeight);
}

- (void)drawRect:(NSRect)dirtyRect {
  [super drawRect:dirtyRect];
  AppKitCanvas canvas;
  const NSRect bounds = [self bounds];
  (*strip_)->draw(canvas,
                  {bounds.origin.x, bounds.origin.y, bounds.size.width, bounds.size.height});
}

- (BOOL)isAccessibilityElement {
  return YES;
}

- (NSAccessibilityRole)accessibilityRole {
  return NSAccessibilityImageRole;
}

- (NSString*)accessibilityLabel {
  return platform::nsString(stripDescription(**strip_));
}

@end
