#pragma once

#include <algorithm>
#include <span>
#include <string>
#include <string_view>

#include "scanner/roles/marker_search.h"
#include "text/unicode.h"

namespace ProcessScanner {

/// A command line as the word rules see it: lowered and searched once for all rules. Its buffers
/// keep their capacity from one read to the next, so that a scan allocates only for its longest
/// line. The texts that are passed in must live as long as they are used here.
class SearchedLine {
 public:
  /// Starts over with these arguments; `joined` is the line that markers are looked for in.
  void read(std::span<const std::string_view> arguments, std::string_view joined) {
    line_.clear();
    text::appendLowered(joined, line_);
    arguments_ = arguments;
    isLowered_ = false;
    found_ = MarkerSearch::find(line_);
  }

  /// The same for texts that are already in lower case.
  void readLowered(std::span<const std::string_view> arguments, std::string_view lower) {
    arguments_ = arguments;
    isLowered_ = true;
    found_ = MarkerSearch::find(lower);
  }

  /// As given: neither lowered nor checked.
  std::span<const std::string_view> arguments() const { return arguments_; }

  /// Whether the lowered line contains this marker.
  bool has(const MarkerSet& marker) const { return found_.intersects(marker); }

  /// Whether the lowered line contains any of these markers.
  bool hasAny(const MarkerSet& markers) const { return found_.intersects(markers); }

  /// Whether the test holds for any lowered argument. The arguments are lowered one by one only
  /// when this is called, which few rules do, and for few lines.
  template <typename Test>
  bool anyArgument(Test test) const {
    return std::ranges::any_of(arguments_,
                               [&](std::string_view argument) { return test(lowered(argument)); });
  }

  /// Whether one whole lowered argument is this text.
  bool hasArgument(std::string_view text) const {
    return anyArgument([text](std::string_view argument) { return argument == text; });
  }

 private:
  std::string_view lowered(std::string_view argument) const {
    if (isLowered_) return argument;
    argument_.clear();
    text::appendLowered(argument, argument_);
    return argument_;
  }

  std::span<const std::string_view> arguments_;
  bool isLowered_ = false;
  MarkerSet found_;
  std::string line_;              // lowered
  mutable std::string argument_;  // the lowered argument that is being tested
};

}  // namespace ProcessScanner
