#pragma once

#include "ui/color.h"

/// A rectangle in points. x and y are its lower left corner; y grows upwards.
struct Rectangle {
  double x = 0;
  double y = 0;
  double width = 0;
  double height = 0;

  constexpr double minX() const { return x; }
  constexpr double maxX() const { return x + width; }
  constexpr double minY() const { return y; }
  constexpr double midY() const { return y + height / 2; }
  /// Smaller by `dx` on the left and on the right, by `dy` above and below; larger when
  /// these are negative.
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

  /// Fills the whole rectangle.
  virtual void fillRect(const Rectangle& rect, const Color& color) = 0;
  /// Fills the ellipse that touches the rectangle's four sides.
  virtual void fillOval(const Rectangle& rect, const Color& color) = 0;
  /// Fills the rectangle with corners that are rounded by `radius` points.
  virtual void fillRoundedRect(const Rectangle& rect, double radius, const Color& color) = 0;
  /// Draws the outline of such a rectangle, `lineWidth` points wide, half on either side.
  virtual void strokeRoundedRect(const Rectangle& rect, double radius, const Color& color,
                                 double lineWidth) = 0;

  /// Saves the state that clipping changes, for restoreState().
  virtual void saveState() = 0;
  /// From now on nothing is painted outside of this rectangle.
  virtual void clipToRoundedRect(const Rectangle& rect, double radius) = 0;
  /// Restores the state that was saved last.
  virtual void restoreState() = 0;
};

/// The dot that ties a process's row to its segment in the strip: an oval in a square picture.
namespace Dot {

inline constexpr double kSide = 12;            ///< of the picture, in points
inline constexpr Rectangle kOval{2, 2, 8, 8};  ///< within the picture

}  // namespace Dot
