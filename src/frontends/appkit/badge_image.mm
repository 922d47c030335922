#include "frontends/appkit/badge_image.h"

NSImage* halvekBadgeImage(CGFloat side) {
  NSBundle* bundle = [NSBundle mainBundle];
  NSURL* url = [bundle URLForResource:@"HalvekBadge" withExtension:@"png"];
  if (url == nil) url = [bundle URLForResource:@"HalvekBadge@2x" withExtension:@"png"];
  if (url == nil) return nil;
  NSImage* image = [[[NSImage alloc] initWithContentsOfURL:url] autorelease];
  [image setSize:NSMakeSize(side, side)];
  return image;
}
