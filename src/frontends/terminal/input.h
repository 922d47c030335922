#pragma once

namespace terminal {

/// One thing that happened at the terminal.
struct Input {
  enum class Kind {
    nothing,  ///< the time to wait is over, or a key that means nothing
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
    redraw,  ///< the window has another size, or its content was lost
    ended,   ///< the terminal is gone, or the program was told to end
  };

  Kind kind = Kind::nothing;
  char32_t character = 0;  ///< of Kind::character
  int x = 0;               ///< of a click or the wheel: column and row, from 0
  int y = 0;
  bool typedAhead = false;  ///< it had come before anybody waited for it

  bool operator==(const Input&) const = default;
};

}  // namespace terminal
