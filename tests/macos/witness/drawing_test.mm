// The pictures in the edition's menu, pixel by pixel.
#import <AppKit/AppKit.h>
#include <gtest/gtest.h>

#include <memory>

#include "frontends/appkit/pictures.h"
#include "frontends/appkit/strip_view.h"
#include "macos/witness/witness.h"
#include "ui/memory_pressure_view.h"

/// Shows an image as large as it is.
@interface ImageWitness : NSView {
 @public
  NSImage* image_;
}
@end

@implementation ImageWitness

- (void)drawRect:(NSRect)dirtyRect {
  constexpr auto kSourceOver = static_cast<NSCompositingOperation>(2);
  [image_ drawInRect:[self bounds] fromRect:NSZeroRect operation:kSourceOver fraction:1];
}

@end

namespace {

using DrawingWitness = Witness;

TEST_F(DrawingWitness, StripIsDrawnTheRightWayUp) {
  const auto strip = std::make_shared<MemoryPressureView>();
  strip->segments = {{0.25, {0.2, 0.92, 0.55}, "a"}};
  strip->pressure = 0.9;
  NSView* view = [[[VordaStripView alloc] initWithStrip:strip] autorelease];
  NSBitmapImageRep* picture = pictureOf(view);
  ASSERT_NE(picture, nil);
  const Pixel segment = pixel(picture, view, 40, 26);
  EXPECT_GT(segment.green, segment.red + 0.3) << "on the left the process's colour";
  const Pixel pressure = pixel(picture, view, 285, 26);
  EXPECT_GT(pressure.red, pressure.green + 0.1) << "on the right the pressure";
  const Pixel upper = pixel(picture, view, 200, 15);
  const Pixel lower = pixel(picture, view, 200, 26);
  EXPECT_GT(upper.sum(), lower.sum() + 0.05) << "the gloss is above";
  EXPECT_LT(lower.sum(), 0.9) << "between them the track";
}

TEST_F(DrawingWitness, DotIsRoundAndOfItsColor) {
  ImageWitness* view = [[[ImageWitness alloc] initWithFrame:NSMakeRect(0, 0, 12, 12)] autorelease];
  view->image_ = dotImage({1, 0.2, 0.2});
  NSBitmapImageRep* picture = pictureOf(view);
  const Pixel middle = pixel(picture, view, 6, 6);
  EXPECT_GT(middle.red, 0.8);
  EXPECT_LT(middle.green, 0.4);
  for (const double corner : {2.2, 9.8}) {
    EXPECT_LT(pixel(picture, view, corner, corner).red, 0.5) << "outside of the oval";
  }
}

}  // namespace
