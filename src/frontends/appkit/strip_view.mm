#include "frontends/appkit/strip_view.h"

#include "frontends/appkit/app_kit_canvas.h"
#include "platform/macos/foundation_text.h"
#include "ui/strip_text.h"

namespace {

/// Around a track, in the colour of text.
void strokeOutline(const Rectangle& track) {
  const CGFloat radius = track.height / 2;
  NSBezierPath* outline = [NSBezierPath
      bezierPathWithRoundedRect:NSMakeRect(track.x, track.y, track.width, track.height)
                        xRadius:radius
                        yRadius:radius];
  [[NSColor labelColor] setStroke];
  [outline setLineWidth:1];
  [outline stroke];
}

}  // namespace

@implementation VordaStripView

- (instancetype)initWithStrip:(const std::shared_ptr<MemoryPressureView>&)strip {
  self =
      [super initWithFrame:NSMakeRect(0, 0, MemoryPressureView::kItemWidth, strip->itemHeight())];
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
  const double gpuHeight = (*strip_)->itemHeight() - MemoryPressureView::kItemHeight;
  return NSMakeSize(MemoryPressureView::kIntrinsicWidth,
                    MemoryPressureView::kIntrinsicHeight + gpuHeight);
}

- (void)drawRect:(NSRect)dirtyRect {
  [super drawRect:dirtyRect];
  AppKitCanvas canvas;
  const NSRect bounds = [self bounds];
  const Rectangle place{bounds.origin.x, bounds.origin.y, bounds.size.width, bounds.size.height};
  (*strip_)->draw(canvas, place);
  if ([[NSWorkspace sharedWorkspace] accessibilityDisplayShouldIncreaseContrast]) {
    const MemoryPressureView::Tracks tracks = (*strip_)->tracks(place);
    for (const auto& track : {tracks.ram, tracks.gpu}) {
      if (track) strokeOutline(*track);
    }
  }
}

- (NSString*)spokenText {
  return platform::nsString(stripDescription(**strip_));
}

@end
