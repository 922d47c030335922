#include "frontends/appkit/app_kit_canvas.h"

namespace {

NSRect nsRect(const Rectangle& rect) {
  return NSMakeRect(rect.x, rect.y, rect.width, rect.height);
}

NSBezierPath* roundedRect(const Rectangle& rect, double radius) {
  return [NSBezierPath bezierPathWithRoundedRect:nsRect(rect) xRadius:radius yRadius:radius];
}

}  // namespace

NSColor* nsColor(const Color& color) {
  if (color.red == color.green && color.green == color.blue) {
    return [NSColor colorWithCalibratedWhite:color.red alpha:color.alpha];
  }
  return [NSColor colorWithCalibratedRed:color.red
                                   green:color.green
                                    blue:color.blue
                                   alpha:color.alpha];
}

// Not NSRectFill, which replaces what is there instead of painting over it.
void AppKitCanvas::fillRect(const Rectangle& rect, const Color& color) {
  [nsColor(color) setFill];
  [NSBezierPath fillRect:nsRect(rect)];
}

void AppKitCanvas::fillOval(const Rectangle& rect, const Color& color) {
  [nsColor(color) setFill];
  [[NSBezierPath bezierPathWithOvalInRect:nsRect(rect)] fill];
}

void AppKitCanvas::fillRoundedRect(const Rectangle& rect, double radius, const Color& color) {
  [nsColor(color) setFill];
  [roundedRect(rect, radius) fill];
}

void AppKitCanvas::strokeRoundedRect(const Rectangle& rect, double radius, const Color& color,
                                     double lineWidth) {
  [nsColor(color) setStroke];
  NSBezierPath* path = roundedRect(rect, radius);
  [path setLineWidth:lineWidth];
  [path stroke];
}

void AppKitCanvas::saveState() {
  [NSGraphicsContext saveGraphicsState];
}

void AppKitCanvas::clipToRoundedRect(const Rectangle& rect, double radius) {
  [roundedRect(rect, radius) addClip];
}

void AppKitCanvas::restoreState() {
  [NSGraphicsContext restoreGraphicsState];
}
