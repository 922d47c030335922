#pragma once

#include <limits>
#include <optional>
#include <string>
#include <vector>

#include "frontends/terminal/cell_grid.h"
#include "frontends/terminal/screen.h"
#include "ui/item_key.h"

namespace terminal {

class AlertView;
class MenuView;
struct MenuGeometry;

/// What Enter or a click would choose: a row of the list, an item of its submenu, or a button.
struct Target {
  const void* alert = nullptr;  ///< the alert that is open, if one is
  std::optional<ItemKey> row;
  std::string item;  ///< the submenu's item or the alert's button; "": the row itself

  bool operator==(const Target&) const = default;
};

/// Everything that can be chosen on the screen as it was drawn.
struct Targets {
  Size size;                        ///< of the screen
  std::optional<Target> selection;  ///< what Enter chooses
  int selectionY = 0;               ///< the line that the selection is in
  bool asks = false;                ///< an alert with more than one button is open
  std::vector<Target> lines;        ///< what a click chooses, by line
};

/// The targets of the menu, and of the alert over it if one is open, on a screen of that size,
/// which must not be too small.
Targets targetsOf(Size size, const MenuView& view, const MenuGeometry& geometry,
                  const AlertView* alert);

/// By which a user's fingers are told from a paste and from a key that is held down, in seconds.
struct InputLimits {
  double betweenKeys = 0.05;    ///< between two keys that fingers press
  double still = 0.3;           ///< for so long something has to be on screen before it is chosen
  double slowestRepeat = 0.12;  ///< between a held key's repeats; a console's is 0.09
  double firstRepeat = 0.75;    ///< before them; most keyboards begin to repeat by then
  /// A paste whose end mark is lost is over when nothing has come for that long.
  double pastePatience = 2;
};

/// Ignores keys and clicks by which the user can't have meant to choose something: pasted text,
/// the repeats of a key that is held down, and what comes so soon after the screen changed that it
/// was meant for something else.
///
/// Pasted is what stands between the marks that a terminal puts around a paste (bracketed paste). A
/// mark may come byte by byte: it is then known only by its last byte, and the Escape that it
/// begins with has already counted as a key.
///
/// A key that does more than move the selection counts only 50 ms or more after the key before it,
/// and 300 ms or more after a letter, which may be part of a typed word. A key that chooses the
/// selection counts only if the selection has not changed for 300 ms; a click, if the line under
/// it has not. (These are InputLimits' own; a test on a real clock has others.) A key that is held
/// down chooses once, and does not answer the alert that it opened.
class InputGuard {
 public:
  explicit InputGuard(const InputLimits& limits = {}) : limits_(limits) {}

  /// Tells the guard what is on screen from now on.
  void shown(Targets targets, double now);

  enum class Verdict {
    counts,
    pasted,   ///< part of a paste, or one of its marks
    ignored,  ///< the repeat of a held key, or too fast for fingers
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
  bool isPasted(const Input& input);
  Input::Kind markEndingWith(const Input& input);

  static constexpr double kNever = -std::numeric_limits<double>::infinity();

  InputLimits limits_;
  Targets targets_;
  double selectionSince_ = 0;
  std::vector<double> linesSince_;
  double lastKey_ = kNever;
  double lastLetter_ = kNever;
  Input::Kind lastKind_ = Input::Kind::nothing;

  bool pasting_ = false;
  double lastInput_ = 0;      ///< when the last input came
  std::u32string begunMark_;  ///< the characters so far of a mark that comes byte by byte
};

}  // namespace terminal
