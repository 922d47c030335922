#include "frontends/appkit/pictures.h"

#include "frontends/appkit/app_kit_canvas.h"
#include "ui/canvas.h"

NSImage* halvekBadgeImage(CGFloat side) {
  NSBundle* bundle = [NSBundle mainBundle];
  NSURL* url = [bundle URLForResource:@"HalvekBadge" withExtension:@"png"];
  if (url == nil) url = [bundle URLForResource:@"HalvekBadge@2x" withExtension:@"png"];
  if (url == nil) return nil;
  NSImage* image = [[[NSImage alloc] initWithContentsOfURL:url] autorelease];
  [image setSize:NSMakeSize(side, side)];
  return image;
}

NSImage* dotImage(const Color& color) {
  const NSSize size = NSMakeSize(Dot::kSide, Dot::kSide);
  NSImage* image = [[[NSImage alloc] initWithSize:size] autorelease];
  [image lockFocus];
  AppKitCanvas().fillOval(Dot::kOval, color);
  [image unlockFocus];
  return image;
}
