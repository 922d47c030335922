#pragma once

#include <optional>
#include <string>

#include "frontends/terminal/cell_grid.h"
#include "frontends/terminal/glyphs.h"

namespace terminal {

/// What the key that takes back a letter types.
inline constexpr char32_t kBackspace = 0x7F;

/// One thing that happened at the terminal.
struct Input {
  enum class Kind {
    nothing,   ///< the time to wait is over
    find,      ///< for the next row with some words
    other,     ///< a key that does nothing here
    function,  ///< F1 and on; `character` is the number
    character,
    up,
    down,
    left,
    right,
    pageUp,
    pageDown,
    home,
    end,
    enter,
    escape,
    tab,
    backTab,
    click,
    wheelUp,
    wheelDown,
    pasteBegin,  ///< what comes now is pasted, not typed
    pasteEnd,
    redraw,  ///< the window has another size, or its content was lost
    ended,   ///< the terminal is gone, or the program was told to end
  };

  Kind kind = Kind::nothing;
  char32_t character = 0;  ///< of Kind::character; control characters, too
  int x = 0;               ///< of a click or the wheel: column and row, from 0
  int y = 0;
  /// When it came, in seconds on the screen's clock; the earliest possible time where that is not
  /// known.
  double came = 0;
  bool followed = false;  ///< more input was waiting when it was read

  bool operator==(const Input&) const = default;
};

/// What the terminal can show.
struct Look {
  Glyphs glyphs = Glyphs::unicode();
  bool colored = true;

  /// The colour of what warns; none where there are no colours.
  std::optional<Rgb> warning() const {
    return colored ? std::optional(Rgb{230, 160, 30}) : std::nullopt;
  }
};

/// A terminal with its keys and its clock, as far as the menu needs them.
class Screen {
 public:
  virtual ~Screen() = default;

  virtual const Look& look() const = 0;
  virtual Size size() const = 0;
  virtual void draw(const CellGrid& grid) = 0;

  /// The next thing that happens; Kind::nothing after that many seconds. Without a time it
  /// waits until something happens.
  virtual Input nextInput(std::optional<double> seconds) = 0;

  /// Rings the terminal's bell.
  virtual void ring() = 0;

  /// Runs a system monitor on the terminal until it is left. False where it can't, or where there
  /// is a display for a monitor with a window.
  [[nodiscard]] virtual bool runSystemMonitor() { return false; }

  /// Asks the terminal to put a text into the clipboard; nobody knows whether it does.
  virtual void copy(const std::string&) {}

  /// Shows a text as ordinary output, without frames, lines of its own or a mouse that is heard,
  /// until the user goes on.
  virtual void showPlain(const std::string&) {}

  /// Seconds on a clock that only goes forward.
  virtual double now() const = 0;
};

}  // namespace terminal
