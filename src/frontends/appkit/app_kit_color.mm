#include "frontends/appkit/app_kit_color.h"

NSColor* nsColor(const Color& color) {
  if (color.red == color.green && color.green == color.blue) {
    return [NSColor colorWithCalibratedWhite:color.red alpha:color.alpha];
  }
  return [NSColor colorWithCalibratedRed:color.red
                                   green:color.green
                                    blue:color.blue
                                   alpha:color.alpha];
}
