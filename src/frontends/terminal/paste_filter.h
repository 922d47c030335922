#pragma once

#include <string>

#include "frontends/terminal/input.h"

namespace terminal {

/// Tells what is pasted from what is typed, at a terminal that puts it in brackets.
class PasteFilter {
 public:
  /// Whether this is part of a paste, or a bracket. Wants all that comes from the terminal, in
  /// its order. A bracket whose bytes come one by one is known by its last: the Escape that it
  /// begins with has then been taken for the key.
  [[nodiscard]] bool takes(const Input& input);

  /// A paste whose end gets lost is over when nothing has come for so many seconds.
  static constexpr double kPatience = 2;

 private:
  Input::Kind bracketEndingWith(const Input& input);

  bool pasting_ = false;
  double last_ = 0;       ///< when something came last
  std::u32string begun_;  ///< of a bracket, as far as it has come in single characters
};

}  // namespace terminal
