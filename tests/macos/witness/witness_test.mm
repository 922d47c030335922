// What an AppKit that draws makes of the edition: structure and pixels. On Linux that is GNUstep's,
// on a Mac the system's own.
#import <AppKit/AppKit.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "frontends/appkit/alert_panel.h"
#include "frontends/appkit/menu_items.h"
#include "frontends/appkit/pictures.h"
#include "frontends/appkit/strip_view.h"
#include "ui/canvas.h"

/// Looks at the alert that is open, and clicks on Cancel.
@interface AlertWitness : NSObject {
 @public
  std::vector<std::string> buttons_;
  NSButton* cancel_;
}
- (void)look;
@end

@implementation AlertWitness

- (void)addButtonsIn:(NSView*)view {
  for (NSView* below in [view subviews]) {
    if ([below isKindOfClass:[NSButton class]] && ![below isHidden]) {
      const std::string title = [[static_cast<NSButton*>(below) title] UTF8String];
      if (!title.empty()) buttons_.push_back(title);
      if (title == "Cancel") cancel_ = static_cast<NSButton*>(below);
    }
    [self addButtonsIn:below];
  }
}

- (void)look {
  [self addButtonsIn:[[NSApp modalWindow] contentView]];
  [cancel_ performClick:nil];
}

@end

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

using testing::IsSupersetOf;

class Witness : public testing::Test {
 protected:
  Witness() { [NSApplication sharedApplication]; }
  ~Witness() override { [pool release]; }

  /// What the view looks like in a window, on black.
  NSBitmapImageRep* pictureOf(NSView* view) {
    const NSRect frame = [view bounds];
    NSWindow* window = [[NSWindow alloc] initWithContentRect:frame
                                                   styleMask:0
                                                     backing:NSBackingStoreBuffered
                                                       defer:NO];
    [window setReleasedWhenClosed:NO];
    [window setBackgroundColor:[NSColor blackColor]];
    [window setContentView:view];
    [window orderFront:nil];
    [window display];
    NSBitmapImageRep* picture = [view bitmapImageRepForCachingDisplayInRect:frame];
    [view cacheDisplayInRect:frame toBitmapImageRep:picture];
    [window close];
    return picture;
  }

  struct Pixel {
    double red, green, blue;
    double sum() const { return red + green + blue; }
  };

  /// At this place of a view that is `side` points wide; y from the top.
  static Pixel pixel(NSBitmapImageRep* picture, NSView* view, double x, double y) {
    const double scale = static_cast<double>([picture pixelsWide]) / [view bounds].size.width;
    NSColor* color = [[picture colorAtX:static_cast<NSInteger>(x * scale)
                                      y:static_cast<NSInteger>(y * scale)]
        colorUsingColorSpace:[NSColorSpace genericRGBColorSpace]];
    return {[color redComponent], [color greenComponent], [color blueComponent]};
  }

  NSAutoreleasePool* pool = [[NSAutoreleasePool alloc] init];
};

// The first test: GNUstep's modal loop hears nothing once a window without a frame was closed.
TEST_F(Witness, AlertHasItsButtons) {
  AlertWitness* witness = [[[AlertWitness alloc] init] autorelease];
  [witness performSelector:@selector(look)
                withObject:nil
                afterDelay:0.2
                   inModes:[NSArray arrayWithObject:NSModalPanelRunLoopMode]];
  const int answer = runAlertPanel({.messageText = "Force Quit?",
                                    .informativeText = "This cannot be undone.",
                                    .buttons = {"Force Quit", "Cancel"}});
  EXPECT_EQ(answer, kAlertFirstButtonReturn + 1);
  EXPECT_THAT(witness->buttons_, IsSupersetOf({"Force Quit", "Cancel"}))
      << "GNUstep's panel holds an unused one besides";
}

TEST_F(Witness, StripIsDrawnTheRightWayUp) {
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

TEST_F(Witness, DotIsRoundAndOfItsColor) {
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

TEST_F(Witness, MenuHasAllItsItemsInTheirPlaces) {
  NSMenu* menu = [[[NSMenu alloc] initWithTitle:@""] autorelease];
  VordaMenuTarget* target = [[[VordaMenuTarget alloc] init] autorelease];
  const MenuItem separator{.kind = MenuItem::Kind::separator};
  const MenuItem row{.title = "row",
                     .dot = Color{1, 0, 0},
                     .submenu = {{.title = "a"}, separator, {.title = "b"}}};
  for (int i = 0; i < 2; ++i) fillMenu(menu, {row, separator, row, separator}, target);
  ASSERT_EQ([menu numberOfItems], 4);
  EXPECT_TRUE([[menu itemAtIndex:1] isSeparatorItem]);
  EXPECT_TRUE([[menu itemAtIndex:3] isSeparatorItem]);
  EXPECT_NE([menu itemAtIndex:1], [menu itemAtIndex:3]);
  for (const int place : {0, 2}) {
    NSMenuItem* item = [menu itemAtIndex:place];
    EXPECT_EQ([item menu], menu);
    EXPECT_NE([item image], nil);
    ASSERT_EQ([[item submenu] numberOfItems], 3);
    EXPECT_EQ([[item submenu] supermenu], menu);
    for (NSMenuItem* below in [[item submenu] itemArray]) EXPECT_EQ([below menu], [item submenu]);
  }
}

}  // namespace
