#pragma once

#include <string>
#include <utility>
#include <vector>

#include "statistics.h"

namespace bench {

/// What was measured. Printed as one table while it comes in, and written as JSON at the end.
class Report {
 public:
  /// Begins a group of lines of the table.
  void section(const std::string& title);

  /// A quotient of two costs: "scan/floor@500".
  void ratio(const std::string& name, const Spread& value);

  /// Any other figure; `group` is the JSON object that holds it.
  void figure(const std::string& group, const std::string& name, const Spread& value);
  void figure(const std::string& group, const std::string& name, double value);

  /// Something that could not be measured, and why.
  void missing(const std::string& name, const std::string& reason);

  /// Prints what is more than it should be, and what could not be measured, once more.
  void tellMissed() const;

  /// {"ratios": {name: number}, group: {name: number}, …, "spread": {name: [lower quartile,
  /// upper quartile]}, "missing": {name: reason}, "missed": {name: what it should be at the
  /// most}}. False when the file can't be written.
  bool writeJson(const std::string& path) const;

 private:
  struct Figure {
    std::string group;
    std::string name;
    Spread value;
    bool hasSpread;
  };

  void add(Figure figure);

  std::vector<Figure> figures_;
  std::vector<std::pair<std::string, std::string>> missing_;
};

}  // namespace bench
