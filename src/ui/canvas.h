#pragma once

#include "ui/color.h"

/// In points; y grows upwards.
struct Rectangle {
  double x = 0;
  double y = 0;
  double width = 0;
  double height = 0;

  constexpr double minX() const { return x; }
  constexpr double maxX() const { return x + width; }
  constexpr double minY() const { return y; }
  constexpr double midY() const { return y + height / 2; }
  constexpr Rectangle insetBy(double dx, double dy) const {
    return {x + dx, y + dy, width - 2 * dx, height - 2 * dy};
  }

  bool operator==(const Rectangle&) const = default;
};

/// What the program draws onto. The origin is at the bottom left; colours are painted over
/// what is there (source-over).
class Canvas {
 public:
  virtual ~Canvas() = default;

  virtual void fillRect(const Rectangle& rect, const Color& color) = 0;
  virtual void fillOval(const Rectangle& rect, const Color& color) = 0;
  virtual void fillRoundedRect(const Rectangle& rect, double radius, const Color& color) = 0;
  virtual void strokeRoundedRect(const Rectangle& rect, double radius, const Color& color,
                                 double lineWidth) = 0;

  /// Keeps the state that clipping changes, until restoreState().
  virtual void saveState() = 0;
  virtual void clipToRoundedRect(const Rectangle& rect, double radius) = 0;
  virtual void restoreState() = 0;
};
