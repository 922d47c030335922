#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "ui/canvas.h"
#include "ui/color.h"

/// How scarce memory is, as the colour at the strip's right end tells it.
enum class PressureLevel {
  low,     ///< less than 55 % of all memory is used
  medium,  ///< less than 80 %
  high,    ///< 80 % or more
};

/// The level of a pressure: used memory divided by all memory, 0 to 1.
PressureLevel pressureLevel(double pressure);

/// The colour of the pressure. It lets through what it is drawn over.
Color pressureColor(PressureLevel level);

/// One segment of the strip.
struct Segment {
  double fraction = 0;   ///< the process's share of all memory, 0 to 1
  Color color;           ///< the process's, as on its row's dot
  std::string label;     ///< the process's display name; not drawn
  std::int32_t pid = 0;  ///< ties the segment to its row where colours can't
  double memMB = 0;      ///< the process's memory, for words that stand in for the picture

  bool operator==(const Segment&) const = default;
};

/// The strip: who holds the memory, one coloured segment per large process, and the pressure at the
/// right end, as a colour.
class MemoryPressureView {
 public:
  /// The size that it asks for, in points.
  ///@{
  static constexpr double kIntrinsicWidth = 280;
  static constexpr double kIntrinsicHeight = 36;
  ///@}
  /// The size that its place in the menu has.
  ///@{
  static constexpr double kItemWidth = 304;
  static constexpr double kItemHeight = 40;
  ///@}

  /// How much of the track the pressure covers, at its right end.
  static constexpr double kPressureShare = 0.08;

  std::vector<Segment> segments;  ///< left to right
  double pressure = 0;            ///< used memory divided by all memory, 0 to 1

  /// Draws the strip into `bounds`. Segments that would overflow the track together are shrunk
  /// to fit; they are never stretched.
  void draw(Canvas& canvas, const Rectangle& bounds) const;

  /// The share of the track that one unit of fraction takes: 1, or less when the segments
  /// would overflow.
  double scale() const;

  bool operator==(const MemoryPressureView&) const = default;
};
