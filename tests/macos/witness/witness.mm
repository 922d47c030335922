#include "macos/witness/witness.h"

#include <unistd.h>

#include <csignal>
#include <string_view>

/// What is behind a view: a picture of a view has nothing there but what views draw.
@interface BlackGround : NSView
@end

@implementation BlackGround

- (void)drawRect:(NSRect)dirtyRect {
  [[NSColor blackColor] set];
  NSRectFill([self bounds]);
}

@end

namespace {

/// Many times what the slowest machine takes.
constexpr unsigned kLongestSeconds = 300;

void giveUp(int) {
  constexpr std::string_view kWords = "A test waits for something that never comes: ended\n";
  [[maybe_unused]] const auto written = write(STDERR_FILENO, kWords.data(), kWords.size());
  _exit(1);
}

}  // namespace

Witness::Witness() {
  std::signal(SIGALRM, giveUp);
  alarm(kLongestSeconds);
  // A program without a bundle may show no window before it has said so.
  [[NSApplication sharedApplication] setActivationPolicy:NSApplicationActivationPolicyAccessory];
}

Witness::~Witness() {
  [pool_ release];
  alarm(0);
}

NSBitmapImageRep* Witness::pictureOf(NSView* view) {
  const NSRect frame = [view bounds];
  NSView* ground = [[[BlackGround alloc] initWithFrame:frame] autorelease];
  [ground addSubview:view];
  NSWindow* window = [[NSWindow alloc] initWithContentRect:frame
                                                 styleMask:0
                                                   backing:NSBackingStoreBuffered
                                                     defer:NO];
  [window setReleasedWhenClosed:NO];
  [window setContentView:ground];
  [window orderFront:nil];
  [window display];
  NSBitmapImageRep* picture = [ground bitmapImageRepForCachingDisplayInRect:frame];
  [ground cacheDisplayInRect:frame toBitmapImageRep:picture];
  [window close];
  return picture;
}

Witness::Pixel Witness::pixel(NSBitmapImageRep* picture, NSView* view, double x, double y) {
  const double scale = static_cast<double>([picture pixelsWide]) / [view bounds].size.width;
  NSColor* color = [[picture colorAtX:static_cast<NSInteger>(x * scale)
                                    y:static_cast<NSInteger>(y * scale)]
      colorUsingColorSpace:[NSColorSpace genericRGBColorSpace]];
  return {
      [color redComponent], [color greenComponent], [color blueComponent], [color alphaComponent]};
}
