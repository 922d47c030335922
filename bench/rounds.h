#pragma once

#include <chrono>
#include <functional>
#include <map>
#include <string>
#include <vector>

namespace bench {

/// One of the things that are compared: does its work once and tells the CPU seconds it took.
struct Contestant {
  std::string name;
  std::function<double()> run;
};

/// CPU seconds by contestant, one a round.
using Measurements = std::map<std::string, std::vector<double>>;

/// Runs the contestants in turns, so that whatever the machine does meanwhile meets all of
/// them alike; each round begins with another one. One more round is run first, to warm up,
/// and not counted. After `longest`, no further round is begun.
Measurements alternate(const std::vector<Contestant>& contestants, int rounds,
                       std::chrono::seconds longest = std::chrono::hours(1));

}  // namespace bench
