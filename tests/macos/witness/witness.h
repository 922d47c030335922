#pragma once

#import <AppKit/AppKit.h>
#include <gtest/gtest.h>

/// What an AppKit that draws makes of the edition. On Linux that is GNUstep's, on a Mac the
/// system's own. A test that never ends is ended, and has failed.
class Witness : public testing::Test {
 protected:
  Witness();
  ~Witness() override;

  /// What the view looks like in a window of its own, on black.
  static NSBitmapImageRep* pictureOf(NSView* view);

  struct Pixel {
    double red = 0;
    double green = 0;
    double blue = 0;
    double alpha = 0;

    double sum() const { return red + green + blue; }
  };

  /// At this place of the view, in points; y from the top.
  static Pixel pixel(NSBitmapImageRep* picture, NSView* view, double x, double y);

 private:
  NSAutoreleasePool* pool_ = [[NSAutoreleasePool alloc] init];
};
