#pragma once

/// A calibrated RGB colour; each component from 0 to 1.
struct Color {
  /// How much there is of each.
  ///@{
  double red = 0;
  double green = 0;
  double blue = 0;
  ///@}
  double alpha = 1;  ///< 0: invisible; 1: opaque

  /// A grey: black at level 0, white at 1.
  static constexpr Color white(double level, double alpha = 1) {
    return {level, level, level, alpha};
  }
  /// The same colour, as opaque as this.
  constexpr Color withAlpha(double value) const { return {red, green, blue, value}; }

  bool operator==(const Color&) const = default;
};
