#pragma once

#include <string>

namespace terminal {

/// Most terminals that show any colour say so in the environment (COLORTERM), not in their
/// description, and descriptions that do are seldom installed. This is the description of
/// the terminal that setupterm() has set up, with direct colours in it: a compiled entry in
/// the form that term(5) lays down. "" when there is none.
std::string directColorDescription();

/// While it exists, curses uses this compiled description instead of the installed ones.
class [[nodiscard]] DescriptionInEnvironment {
 public:
  explicit DescriptionInEnvironment(const std::string& compiled);
  ~DescriptionInEnvironment();
  DescriptionInEnvironment(const DescriptionInEnvironment&) = delete;
  DescriptionInEnvironment& operator=(const DescriptionInEnvironment&) = delete;

 private:
  bool wasSet_ = false;
  std::string previous_;
};

}  // namespace terminal
