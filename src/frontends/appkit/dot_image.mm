#include "frontends/appkit/dot_image.h"

#include "frontends/appkit/app_kit_canvas.h"

NSImage* dotImage(const Color& color) {
  constexpr double kSide = 12;
  constexpr Rectangle kDot{2, 2, 8, 8};
  NSImage* image = [[[NSImage alloc] initWithSize:NSMakeSize(kSide, kSide)] autorelease];
  [image lockFocus];
  AppKitCanvas().fillOval(kDot, color);
  [image unlockFocus];
  return image;
}
