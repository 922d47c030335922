#include "macos/witness/witness.h"

#include <unistd.h>

#include <csignal>
#include <string_view>

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
  [NSApplication sharedApplication];
}

Witness::~Witness() {
  [pool_ release];
  alarm(0);
}

NSBitmapImageRep* Witness::pictureOf(NSView* view) {
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

Witness::Pixel Witness::pixel(NSBitmapImageRep* picture, NSView* view, double x, double y) {
  const double scale = static_cast<double>([picture pixelsWide]) / [view bounds].size.width;
  NSColor* color = [[picture colorAtX:static_cast<NSInteger>(x * scale)
                                    y:static_cast<NSInteger>(y * scale)]
      colorUsingColorSpace:[NSColorSpace genericRGBColorSpace]];
  return {
      [color redComponent], [color greenComponent], [color blueComponent], [color alphaComponent]};
}
