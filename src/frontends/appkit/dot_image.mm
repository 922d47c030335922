#include "frontends/appkit/dot_image.h"

#include "frontends/appkit/app_kit_canvas.h"
#include "ui/dot.h"

NSImage* dotImage(const Color& color) {
  const NSSize size = NSMakeSize(Dot::kSide, Dot::kSide);
  NSImage* image = [[[NSImage alloc] initWithSize:size] autorelease];
  [image lockFocus];
  AppKitCanvas().fillOval(Dot::kOval, color);
  [image unlockFocus];
  return image;
}
