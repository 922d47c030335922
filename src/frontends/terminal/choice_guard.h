#pragma once

#include <limits>
#include <vector>

#include "frontends/terminal/input.h"
#include "frontends/terminal/targets.h"

namespace terminal {

/// Keeps keys and clicks from choosing what nobody meant: the keys of a text that is pasted or
/// of one that is held down, and all that comes while what they would choose is still moving.
///
/// A key that does more than move counts 50 ms or more after the key before it, and 300 ms or
/// more after a letter: letters come in words. One that chooses what is selected counts only
/// when that has stood still for 300 ms; a click, when the line under it has. A held key chooses
/// once, and never answers the question that it led to.
class ChoiceGuard {
 public:
  /// This is what is seen from now on.
  void shown(Targets targets, double now);

  enum class Verdict {
    counts,
    ignored,  ///< part of a text, or of a key that is held down
    tooSoon,  ///< the user may well have meant it, and does not know that it did nothing
  };
  /// Whether this may do what it does. Wants all that comes from the terminal, in its order;
  /// `now` is when it was read.
  [[nodiscard]] Verdict judge(const Input& input, double now);

 private:
  enum class Effect { moves, commands, chooses, clicks };
  Effect effectOf(const Input& input) const;
  Verdict verdictOf(const Input& input) const;
  Verdict verdictOfKey(const Input& input) const;

  static constexpr double kNever = -std::numeric_limits<double>::infinity();

  Targets targets_;
  double selectionSince_ = 0;
  std::vector<double> linesSince_;
  double lastKey_ = kNever;
  double lastLetter_ = kNever;
  Input::Kind lastKind_ = Input::Kind::nothing;
};

}  // namespace terminal
