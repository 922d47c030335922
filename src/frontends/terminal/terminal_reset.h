#pragma once

#include <string>

namespace terminal {

/// The bytes that give the terminal which curses has opened back in its ordinary state: pasting,
/// mouse, colours, keys, cursor and screen. `lastRow` is its lowest row, from 0.
std::string resetBytes(int lastRow);

}  // namespace terminal
