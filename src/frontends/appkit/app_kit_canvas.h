#pragma once

#import <AppKit/AppKit.h>

#include "ui/canvas.h"

/// The colour as calibrated RGB; greys as calibrated white.
NSColor* nsColor(const Color& color);

/// Draws onto AppKit's current graphics context.
class AppKitCanvas : public Canvas {
 public:
  void fillRect(const Rectangle& rect, const Color& color) override;
  void fillOval(const Rectangle& rect, const Color& color) override;
  void fillRoundedRect(const Rectangle& rect, double radius, const Color& color) override;
  void strokeRoundedRect(const Rectangle& rect, double radius, const Color& color,
                         double lineWidth) override;
  void saveState() override;
  void clipToRoundedRect(const Rectangle& rect, double radius) override;
  void restoreState() override;
};
