#include "scanner/fixed_rules/command_line.h"

namespace ProcessScanner {

void CommandLine::read(std::span<const std::string_view> arguments, std::string_view joined) {
  line_.clear();
  text::appendLowered(joined, line_);
  arguments_ = arguments;
  isLowered_ = false;
  found_ = MarkerSearch::find(line_);
}

void CommandLine::readLowered(std::span<const std::string_view> arguments, std::string_view lower) {
  arguments_ = arguments;
  isLowered_ = true;
  found_ = MarkerSearch::find(lower);
}

std::vector<std::string_view> viewsOf(std::span<const std::string> strings) {
  return {strings.begin(), strings.end()};
}

}  // namespace ProcessScanner
