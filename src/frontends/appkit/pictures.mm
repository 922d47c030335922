#include "frontends/appkit/pictures.h"

#include "frontends/appkit/app_kit_canvas.h"
#include "ui/canvas.h"

/// A dot that is drawn anew for each screen, in the screen's own pixels.
@interface VordaDot : NSCustomImageRep {
 @private
  Color color_;
}
- (instancetype)initWithColor:(const Color&)color;
@end

@implementation VordaDot

// AppKit keeps no hold of the delegate, and copies representations: so it is the class, which
// always exists, and the dot to draw is the message's argument.
- (instancetype)initWithColor:(const Color&)color {
  self = [super initWithDrawSelector:@selector(drawDot:) delegate:[VordaDot class]];
  if (self != nil) color_ = color;
  return self;
}

- (id)copyWithZone:(NSZone*)zone {
  VordaDot* copy = [super copyWithZone:zone];
  copy->color_ = color_;
  return copy;
}

+ (void)drawDot:(VordaDot*)dot {
  AppKitCanvas().fillOval(Dot::kOval, dot->color_);
}

@end

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
  VordaDot* dot = [[[VordaDot alloc] initWithColor:color] autorelease];
  [dot setSize:size];
  [image addRepresentation:dot];
  return image;
}
