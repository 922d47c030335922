#pragma once

namespace terminal {

/// What the key that takes back a letter types.
inline constexpr char32_t kBackspace = 0x7F;

/// One thing that happened at the terminal.
struct Input {
  enum class Kind {
    nothing,  ///< the time to wait is over
    find,     ///< F3
    other,    ///< a key that does nothing here
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
  char32_t character = 0;  ///< of Kind::character
  int x = 0;               ///< of a click or the wheel: column and row, from 0
  int y = 0;
  /// When it came, in seconds on the screen's clock; the earliest possible time where that is not
  /// known.
  double came = 0;
  bool followed = false;  ///< more input was waiting when it was read

  bool operator==(const Input&) const = default;
};

}  // namespace terminal
