#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "ui/canvas.h"
#include "ui/color.h"

/// One segment of the strip.
struct Segment {
  double fraction = 0;   ///< the process's share of all memory, 0 to 1
  Color color;           ///< the process's, as on its row's dot
  std::string label;     ///< the process's display name; not drawn
  std::int32_t pid = 0;  ///< ties the segment to its row where colours can't
  double memMB = 0;      ///< the process's memory, for words that stand in for the picture

  bool operator==(const Segment&) const = default;
};

/// The share of its track that one unit of fraction takes: 1, or less when the segments would
/// overflow (strip_drawing.cpp).
double scaleOf(std::span<const Segment> segments);

/// A thinner track below the strip's: who holds the cards' memory.
struct GpuTrack {
  std::vector<Segment> segments;  ///< left to right; fractions of all cards' memory together
  double pressure = 0;            ///< used memory divided by all memory, 0 to 1

  bool operator==(const GpuTrack&) const = default;
};

/// The strip: the track of the machine's memory, with the pressure at its right end, as a colour;
/// below it, where there are graphics cards, a thinner one of theirs.
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
  /// How much higher it is with a track of the cards.
  static constexpr double kGpuHeight = 16;

  /// How much of the track the pressure covers, at its right end.
  static constexpr double kPressureShare = 0.08;

  std::vector<Segment> segments;               ///< left to right
  double pressure = 0;                         ///< used memory divided by all memory, 0 to 1
  std::optional<GpuTrack> gpu = std::nullopt;  ///< none without a card

  /// The height that its place in the menu has.
  double itemHeight() const { return kItemHeight + (gpu ? kGpuHeight : 0); }

  /// Draws the strip into `bounds` (strip_drawing.cpp). Segments that would overflow the track
  /// together are shrunk to fit; they are never stretched.
  void draw(Canvas& canvas, const Rectangle& bounds) const;

  /// Where in `bounds` the tracks lie, which are rounded by half their height; nullopt for one that
  /// is not drawn.
  struct Tracks {
    std::optional<Rectangle> ram;
    std::optional<Rectangle> gpu;
  };
  Tracks tracks(const Rectangle& bounds) const;

  /// scaleOf() its segments.
  double scale() const { return scaleOf(segments); }

  bool operator==(const MemoryPressureView&) const = default;
};
