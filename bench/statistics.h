#pragma once

#include <span>
#include <vector>

namespace bench {

/// The middle of a set of measurements and the quarters around it.
struct Spread {
  double median = 0;
  double lowerQuartile = 0;
  double upperQuartile = 0;
};

/// All zero for no values.
Spread spread(std::vector<double> values);

/// The quotients of two rows of measurements that were taken side by side.
Spread ratio(std::span<const double> numerators, std::span<const double> denominators);

struct Point {
  double x = 0;
  double y = 0;
};

/// y = intercept + slope * x.
struct Line {
  double intercept = 0;
  double slope = 0;
  double residual = 0;  ///< the largest distance of a point from the line, as a share of its y
};

/// The line that keeps the relative distances least: the points span orders of magnitude,
/// and the small ones shall count as much as the large ones. At least two different x.
Line fit(std::span<const Point> points);

}  // namespace bench
