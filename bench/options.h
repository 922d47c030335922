#pragma once

#include <set>
#include <string>
#include <vector>

namespace bench {

/// What the command line asks for.
struct Options {
  std::set<std::string> parts{"refresh",     "work",   "peers", "pace",    "steps",
                              "credentials", "growth", "rest",  "opening", "list"};
  std::vector<std::size_t> processes{500, 2000, 5000};
  int rounds = 15;
  std::string json = "bench.json";

  bool wants(const std::string& part) const { return parts.contains(part); }
};

/// Ends the program with a message when the command line makes no sense.
Options parseOptions(int argc, char** argv);

}  // namespace bench
