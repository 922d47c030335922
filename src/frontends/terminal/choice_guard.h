#pragma once

#include <limits>
#include <vector>

#include "frontends/terminal/input.h"
#include "frontends/terminal/targets.h"

namespace terminal {

/// Ignores keys and clicks by which the user can't have meant to choose something: pasted text,
/// the repeats of a key that is held down, and what comes so soon after the screen changed that it
/// was meant for something else.
///
/// A key that does more than move the selection counts only 50 ms or more after the key before it,
/// and 300 ms or more after a letter, which may be part of a typed word. A key that chooses the
/// selection counts only if the selection has not changed for 300 ms; a click, if the line under
/// it has not. A key that is held down chooses once, and does not answer the alert that it opened.
class ChoiceGuard {
 public:
  /// Tells the guard what is on screen from now on.
  void shown(Targets targets, double now);

  enum class Verdict {
    counts,
    ignored,  ///< pasted, or the repeat of a held key
    tooSoon,  ///< perhaps meant: tell the user that it did nothing
  };
  /// Whether this input may take effect. To be called with every input, in order; `now` is when it
  /// was read.
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
