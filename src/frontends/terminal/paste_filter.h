#pragma once

#include <string>

#include "frontends/terminal/screen.h"

namespace terminal {

/// Tells pasted text from typed keys, on a terminal that marks where a paste begins and ends
/// (bracketed paste).
class PasteFilter {
 public:
  /// Whether this is part of a paste, or one of its marks. To be called with every input, in
  /// order. A mark may come byte by byte: it is then known only by its last byte, and the Escape
  /// that it begins with has already counted as a key.
  [[nodiscard]] bool takes(const Input& input);

  /// In seconds. A paste whose end mark is lost is over when nothing has come for that long.
  static constexpr double kPatience = 2;

 private:
  Input::Kind bracketEndingWith(const Input& input);

  bool pasting_ = false;
  double last_ = 0;       ///< when the last input came
  std::u32string begun_;  ///< the characters so far of a mark that comes byte by byte
};

}  // namespace terminal
