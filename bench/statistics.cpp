#include "statistics.h"

#include <algorithm>
#include <cmath>

namespace bench {
namespace {

/// Between the two neighbours where `share` of the way falls between values.
double quantile(const std::vector<double>& sorted, double share) {
  const double place = share * static_cast<double>(sorted.size() - 1);
  const auto below = static_cast<std::size_t>(place);
  const std::size_t above = std::min(below + 1, sorted.size() - 1);
  return std::lerp(sorted[below], sorted[above], place - static_cast<double>(below));
}

}  // namespace

Spread spread(std::vector<double> values) {
  if (values.empty()) return {};
  std::sort(values.begin(), values.end());
  return {quantile(values, 0.5), quantile(values, 0.25), quantile(values, 0.75)};
}

Spread ratio(std::span<const double> numerators, std::span<const double> denominators) {
  std::vector<double> quotients;
  for (std::size_t i = 0; i < std::min(numerators.size(), denominators.size()); ++i) {
    if (denominators[i] > 0) quotients.push_back(numerators[i] / denominators[i]);
  }
  return spread(std::move(quotients));
}

Line fit(std::span<const Point> points) {
  double weights = 0;
  double sumX = 0;
  double sumY = 0;
  double sumXX = 0;
  double sumXY = 0;
  for (const auto [x, y] : points) {
    const double weight = 1 / (y * y);
    weights += weight;
    sumX += weight * x;
    sumY += weight * y;
    sumXX += weight * x * x;
    sumXY += weight * x * y;
  }
  Line line;
  line.slope = (weights * sumXY - sumX * sumY) / (weights * sumXX - sumX * sumX);
  line.intercept = (sumY - line.slope * sumX) / weights;
  for (const auto [x, y] : points) {
    line.residual = std::max(line.residual, std::abs(line.intercept + line.slope * x - y) / y);
  }
  return line;
}

}  // namespace bench
