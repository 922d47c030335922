#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "frontends/terminal/color_depth.h"

// What the description of a terminal (terminfo) is asked for.
namespace terminal {

/// What the terminal on standard output can do.
struct TerminalCheck {
  std::string name;     ///< of the description that holds: TERM's, or what stands in for it
  std::string problem;  ///< why it can't show a menu, in one line; "" when it can
  ColorDepth depth = ColorDepth::none;
  /// The compiled description to use in place of the installed one; "" for that one.
  std::string description;
};

/// The description to use for a terminal whose own is not installed, when its maker promises that
/// it does what that one says; nullptr for an unknown one.
const char* standInFor(std::string_view name);

/// Reads TERM and the description of the terminal that it names, COLORTERM and NO_COLOR.
TerminalCheck checkTerminal();

/// The bytes after which the terminal that curses has opened puts what is pasted in brackets (or
/// does so no more), so that it can be told from keys. Empty for a terminal that would show them
/// as text.
std::string pasteBrackets(bool on);

/// The bytes between which the terminal shows nothing yet of what is drawn. Empty for a terminal
/// that would show them as text.
std::string synchronizedUpdate(bool on);

/// The bytes that ask the terminal to put a text into the clipboard (OSC 52). Empty for a terminal
/// that would show them.
std::string clipboardBytes(std::string_view text);

/// The bytes that return the terminal that curses has opened to its ordinary state: pasting,
/// mouse, colours, keys, cursor and screen. `lastRow` is its lowest row, from 0.
std::string resetBytes(int lastRow);

/// Whether the terminal has a text capability: terminfo answers null where it lacks one, and -1
/// as an address where there can be no text of that name.
inline bool isPresent(const char* capability) {
  return capability != nullptr && reinterpret_cast<std::intptr_t>(capability) != -1;
}

}  // namespace terminal
